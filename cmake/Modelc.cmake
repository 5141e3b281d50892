# Compiling model files. The generated files are never checked in: they are made in the
# build tree, whenever the model or the compiler is newer.

# vxlan_model(TARGET MODEL_FILE OUTPUT_DIR)
#
# Compiles MODEL_FILE (from the current source folder) into OUTPUT_DIR/FOLDER, FOLDER being
# the one that holds the model file, and adds the result to TARGET. Whoever uses TARGET
# finds the header as "FOLDER/NAME.h".
function(vxlan_model target model_file output_dir)
    cmake_path(ABSOLUTE_PATH model_file NORMALIZE OUTPUT_VARIABLE model)
    cmake_path(GET model PARENT_PATH folder)
    cmake_path(GET folder FILENAME prefix)
    cmake_path(GET model STEM name)
    set(stem "${output_dir}/${prefix}/${name}")
    add_custom_command(
        OUTPUT "${stem}.h" "${stem}.cpp" "${stem}Reflection.cpp"
        COMMAND modelc --include-prefix "${prefix}" "${model}" "${output_dir}/${prefix}"
        DEPENDS modelc "${model}"
        COMMENT "Compiling the model ${prefix}/${name}"
        VERBATIM)
    target_sources(${target} PRIVATE "${stem}.cpp" "${stem}Reflection.cpp" "${stem}.h")
    target_include_directories(${target} PUBLIC "${output_dir}")
endfunction()
