#pragma once

#include <array>
#include <string_view>

/// The scripts that connect a shell with the program. A script knows no option and no command: it
/// hands the typed words to `vxshow complete`, and takes the lines of the answer as text. No name
/// in them is ever evaluated.
namespace vxshow::cli::command {

struct CompletionScript {
    std::string_view shell;
    std::string_view text;
};

inline constexpr std::string_view bashScript = R"(# Completion of vxshow for bash 4.4 or later.
_vxshow() {
    local kind= word
    COMPREPLY=()
    {
        IFS= read -r kind
        while IFS= read -r word; do
            COMPREPLY+=("$word")
        done
    } < <("${1/#\~\//$HOME/}" complete bash "$COMP_WORDBREAKS" "${COMP_LINE:0:COMP_POINT}" 2>/dev/null)
    case $kind in
        files) compopt -o default ;;
        directories) compopt -o dirnames ;;
    esac
}
complete -F _vxshow vxshow
)";

inline constexpr std::string_view zshScript = R"(#compdef vxshow
# Completion of vxshow for zsh 5 or later.
_vxshow() {
    local kind line program=${(Q)words[1]}
    local -a reply values shown
    reply=("${(@f)$("${program/#\~\//$HOME/}" complete zsh -- "${(@Q)words[2,CURRENT-1]}" "${(Q)PREFIX}" 2>/dev/null)}")
    kind=$reply[1]
    case $kind in
        (files|directories)
            [[ $PREFIX == --*=* ]] && compset -P '*='
            if [[ $kind == files ]]; then
                _files
            else
                _files -/
            fi
            ;;
        (words)
            for line in "${(@)reply[2,-1]}"; do
                values+=("${line%%$'\t'*}")
                shown+=("${line/$'\t'/  }")
            done
            compadd -l -d shown -a values
            ;;
    esac
}
if [[ $funcstack[1] == _vxshow ]]; then
    _vxshow "$@"
else
    compdef _vxshow vxshow
fi
)";

inline constexpr std::string_view fishScript = R"(# Completion of vxshow for fish 3 or later.
function __vxshow_complete
    set -l words (commandline -opc)
    set -l token (commandline -ct)
    set -l program (string replace -r '^~/' "$HOME/" -- $words[1])
    set -e words[1]
    set -l reply ($program complete fish -- $words "$token" 2>/dev/null)
    set -l kind $reply[1]
    set -e reply[1]
    set -l before (string match -r -- '^--[^=]*=' "$token")
    set -l path (string replace -r -- '^--[^=]*=' '' "$token")
    switch "$kind"
        case words
            string join -- \n $reply
        case files
            for file in (__fish_complete_path "$path")
                printf '%s%s\n' "$before" "$file"
            end
        case directories
            for file in (__fish_complete_directories "$path" '')
                printf '%s%s\n' "$before" "$file"
            end
    end
end
complete -c vxshow -f -a '(__vxshow_complete)'
)";

inline constexpr std::array<CompletionScript, 3> completionScripts{
    {{"bash", bashScript}, {"zsh", zshScript}, {"fish", fishScript}}};

} // namespace vxshow::cli::command
