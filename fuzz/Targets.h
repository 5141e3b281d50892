#pragma once

#include <string_view>

/// The targets. Each takes one input, any bytes, and returns if the properties that its source file
/// names hold; otherwise it ends the process, as the sanitizers do when they find an error.
namespace fuzz {

void commandLine(std::string_view bytes);
void fabricFile(std::string_view bytes);
void frrAnswer(std::string_view bytes);
void hashedMaps(std::string_view bytes);
void modelText(std::string_view bytes);
void modelValues(std::string_view bytes);
void orderedMap(std::string_view bytes);
void ovsdbAnswer(std::string_view bytes);
void printer(std::string_view bytes);
void remotes(std::string_view bytes);
void screen(std::string_view bytes);
void snapshot(std::string_view bytes);
void stringForms(std::string_view bytes);
void tableFile(std::string_view bytes);
void tableOperations(std::string_view bytes);

} // namespace fuzz
