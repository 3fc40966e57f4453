#pragma once

#include <sstream>
#include <string>
#include <vector>

/// @return  the pieces of `text` between separators; an empty last one is left out
inline std::vector<std::string> split(const std::string& text, char separator)
{
    std::vector<std::string> pieces;
    std::istringstream stream{text};
    for (std::string piece; std::getline(stream, piece, separator);)
        pieces.push_back(piece);
    return pieces;
}
