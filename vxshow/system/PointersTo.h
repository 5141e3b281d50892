#pragma once

#include <string>
#include <vector>

namespace vxshow::system {

/// The texts as the system takes a list of words or an environment: with a null pointer at the end.
/// Valid as long as the texts are.
inline std::vector<char *> pointersTo(std::vector<std::string> & texts) {
    std::vector<char *> pointers;
    pointers.reserve(texts.size() + 1);
    for (std::string & text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

} // namespace vxshow::system
