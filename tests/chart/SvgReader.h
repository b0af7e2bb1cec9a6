#pragma once
// Reads a picture of scalable vector graphics back: its elements in order, with what stands around them.

#include <map>
#include <string>
#include <vector>

namespace Quillon {

struct SvgElement {
    std::string Name;
    std::map<std::string, std::string> Attributes;
    std::string Text;                 // between its tags, entities resolved
    std::vector<std::size_t> Parents; // places of the elements around it, the outermost first

    // An attribute, "" without it; a number, or a number that cannot be (-1e9) without it.
    std::string Get(const std::string& name) const;
    double Number(const std::string& name) const;
};

// Problem says what is no well-formed document, "" when it is one.
struct SvgDocument {
    std::vector<SvgElement> Elements;
    std::string Problem;

    std::vector<SvgElement> All(const std::string& name) const;
};
SvgDocument ReadSvg(const std::string& text);

} // namespace Quillon
