#include "SvgReader.h"

#include <cstdlib>

namespace Quillon {

namespace {

struct Scanner {
    const std::string& Text;
    std::size_t At = 0;
    SvgDocument Document{};
    std::vector<std::size_t> Open{};

    bool Starts(const char* what) const {
        return Text.compare(At, std::char_traits<char>::length(what), what) == 0;
    }
};

void Fail(Scanner& scanner, const std::string& problem) {
    if (scanner.Document.Problem.empty()) scanner.Document.Problem = problem;
    scanner.At = scanner.Text.size();
}

std::string Resolved(Scanner& scanner, const std::string& raw) {
    static const std::map<std::string, char> entities = {
        {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}};
    std::string text;
    for (std::size_t i = 0; i < raw.size(); ++i) {
        const auto byte = static_cast<unsigned char>(raw[i]);
        if (byte < 0x20 && raw[i] != '\n') Fail(scanner, "control code");
        if (raw[i] != '&') {
            text += raw[i];
            continue;
        }
        const std::size_t end = raw.find(';', i);
        const auto found =
            end == std::string::npos ? entities.end() : entities.find(raw.substr(i + 1, end - i - 1));
        if (found == entities.end()) {
            Fail(scanner, "entity");
            return text;
        }
        text += found->second;
        i = end;
    }
    return text;
}

void ReadAttributes(Scanner& scanner, const std::string& tag, SvgElement& element) {
    std::size_t at = tag.find_first_of(" \n");
    element.Name = tag.substr(0, at);
    while (at != std::string::npos && (at = tag.find_first_not_of(" \n", at)) != std::string::npos) {
        const std::size_t equals = tag.find("=\"", at);
        const std::size_t end = equals == std::string::npos ? equals : tag.find('"', equals + 2);
        if (end == std::string::npos) return Fail(scanner, "attribute");
        const std::string name = tag.substr(at, equals - at);
        const std::string value = tag.substr(equals + 2, end - equals - 2);
        if (value.find('<') != std::string::npos) return Fail(scanner, "attribute");
        if (!element.Attributes.emplace(name, Resolved(scanner, value)).second)
            return Fail(scanner, "attribute twice");
        at = end + 1;
    }
}

void ReadTag(Scanner& scanner) {
    const std::size_t end = scanner.Text.find('>', scanner.At);
    if (end == std::string::npos) return Fail(scanner, "tag");
    std::string tag = scanner.Text.substr(scanner.At + 1, end - scanner.At - 1);
    scanner.At = end + 1;
    if (tag.starts_with("?")) return;
    if (tag.starts_with("/")) {
        if (scanner.Open.empty() || scanner.Document.Elements[scanner.Open.back()].Name != tag.substr(1))
            return Fail(scanner, "closing tag");
        return scanner.Open.pop_back();
    }
    SvgElement element;
    element.Parents = scanner.Open;
    const bool empty = tag.ends_with("/");
    if (empty) tag.pop_back();
    ReadAttributes(scanner, tag, element);
    if (!empty) scanner.Open.push_back(scanner.Document.Elements.size());
    scanner.Document.Elements.push_back(element);
}

} // namespace

std::string SvgElement::Get(const std::string& name) const {
    const auto found = Attributes.find(name);
    return found == Attributes.end() ? "" : found->second;
}

double SvgElement::Number(const std::string& name) const {
    const std::string text = Get(name);
    return text.empty() ? -1e9 : std::strtod(text.c_str(), nullptr);
}

std::vector<SvgElement> SvgDocument::All(const std::string& name) const {
    std::vector<SvgElement> found;
    for (const SvgElement& element : Elements)
        if (element.Name == name) found.push_back(element);
    return found;
}

SvgDocument ReadSvg(const std::string& text) {
    Scanner scanner{text};
    while (scanner.At < text.size()) {
        if (scanner.Starts("<")) {
            ReadTag(scanner);
            continue;
        }
        const std::size_t end = std::min(text.find('<', scanner.At), text.size());
        const std::string between = text.substr(scanner.At, end - scanner.At);
        scanner.At = end;
        if (!scanner.Open.empty())
            scanner.Document.Elements[scanner.Open.back()].Text += Resolved(scanner, between);
        else if (between.find_first_not_of('\n') != std::string::npos)
            Fail(scanner, "text outside");
    }
    if (!scanner.Open.empty()) Fail(scanner, "not closed");
    return scanner.Document;
}

} // namespace Quillon
