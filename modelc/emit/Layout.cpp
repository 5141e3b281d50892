#include "modelc/emit/Layout.h"

#include <optional>

namespace modelc {

namespace {

std::optional<std::string> filled(std::string const & head, std::size_t column,
                                  std::vector<std::string> const & items,
                                  std::string const & tail) {
    std::string text = head;
    std::size_t used = column;
    for (std::size_t i = 0; i < items.size(); ++i) {
        bool const last = i + 1 == items.size();
        std::size_t const need = items[i].size() + (last ? tail.size() : 1);
        if (column + need > lineWidth) {
            return std::nullopt;
        }
        if (i > 0 && used + 1 + need <= lineWidth) {
            text += ' ';
            ++used;
        } else if (i > 0) {
            text += '\n' + std::string(column, ' ');
            used = column;
        }
        text += items[i] + (last ? "" : ",");
        used += need;
    }
    return text + tail + "\n";
}

/// "return a && b && c;" on several lines, the operands aligned with the first one.
std::string conjunction(std::string const & margin, std::string const & text) {
    std::string const head = "return ";
    std::string broken = margin;
    std::size_t column = margin.size();
    for (std::size_t from = 0; from < text.size();) {
        std::size_t const found = text.find(" && ", from);
        std::size_t const to = found == std::string::npos ? text.size() : found + 3;
        if (from > 0 && column + 1 + to - from > lineWidth) {
            broken += '\n' + margin + std::string(head.size(), ' ');
            column = margin.size() + head.size();
        } else if (from > 0) {
            broken += ' ';
            ++column;
        }
        broken += text.substr(from, to - from);
        column += to - from;
        from = to + 1;
    }
    return broken + "\n";
}

/// Splits a list of arguments at the commas outside parentheses and string literals.
std::vector<std::string> splitArguments(std::string const & list) {
    std::vector<std::string> cut{""};
    int depth = 0;
    bool literal = false;
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (literal && list[i] == '\\') {
            cut.back() += list[i++];
        } else if (list[i] == '"') {
            literal = !literal;
        } else if (!literal) {
            depth += list[i] == '(' ? 1 : list[i] == ')' ? -1 : 0;
        }
        if (!literal && depth == 0 && list.compare(i, 2, ", ") == 0) {
            cut.emplace_back();
            ++i;
        } else {
            cut.back() += list[i];
        }
    }
    return cut;
}

} // namespace

std::string joined(std::vector<std::string> const & items, std::string_view separator) {
    std::string text;
    for (auto const & item : items) {
        text.append(text.empty() ? "" : separator).append(item);
    }
    return text;
}

std::string wrapped(std::size_t indent, std::string const & head,
                    std::vector<std::string> const & items, std::string const & tail) {
    std::string const start = std::string(indent, ' ') + head;
    if (auto text = filled(start, start.size(), items, tail)) {
        return *text;
    }
    std::size_t const column = indent + 4;
    auto text = filled(start + "\n" + std::string(column, ' '), column, items, tail);
    return text ? *text : start + joined(items, ", ") + tail + "\n";
}

std::string signature(std::size_t indent, std::string const & result, std::string const & name,
                      std::vector<std::string> const & parameters, std::string const & tail) {
    std::string const start = std::string(indent, ' ') + result + (result.empty() ? "" : " ");
    if (auto text = filled(start + name + "(", start.size() + name.size() + 1, parameters, tail)) {
        return *text;
    }
    return std::string(indent, ' ') + result + "\n" + wrapped(indent, name + "(", parameters, tail);
}

std::string statement(std::size_t indent, std::string const & text) {
    std::string const margin(indent, ' ');
    if (indent + text.size() <= lineWidth) {
        return margin + text + "\n";
    }
    if (text.find(" && ") != std::string::npos) {
        return conjunction(margin, text);
    }
    std::size_t const inner = text.find_first_not_of(' ');
    std::size_t const open = text.find('(');
    std::size_t const close = text.rfind(')');
    if (open == std::string::npos || close < open) {
        return margin + text + "\n";
    }
    return wrapped(indent + inner, text.substr(inner, open + 1 - inner),
                   splitArguments(text.substr(open + 1, close - open - 1)), text.substr(close));
}

std::string docComment(std::size_t indent, std::vector<std::string> const & lines) {
    std::string text;
    for (auto const & line : lines) {
        text.append(indent, ' ').append(line.empty() ? "///" : "/// ").append(line).append("\n");
    }
    return text;
}

} // namespace modelc
