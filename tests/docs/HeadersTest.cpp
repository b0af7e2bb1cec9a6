// What a header declares stands in the source of its name: whoever reads "fit/Sums.h" has not to search.
#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace Quillon {
namespace {

namespace fs = std::filesystem;

// --- a reader of C++ that knows as much as it takes to tell declarations from definitions
// --------------------

// One behind the literal or comment that begins at i; i where none does.
std::size_t BehindLiteral(std::string_view text, std::size_t i) {
    const auto behind = [&](std::string_view end, std::size_t from) {
        const std::size_t found = text.find(end, from);
        return found == std::string_view::npos ? text.size() : found + end.size();
    };
    if (text.substr(i, 2) == "//") return behind("\n", i) - 1;
    if (text.substr(i, 2) == "/*") return behind("*/", i + 2);
    if (text.substr(i, 2) == "R\"")
        return behind(")" + std::string(text.substr(i + 2, text.find('(', i) - i - 2)) + "\"", i);
    const bool mark = i > 0 && std::isdigit(static_cast<unsigned char>(text[i - 1])); // 20'000
    if (text[i] != '"' && (text[i] != '\'' || mark)) return i;
    for (std::size_t end = i + 1; end < text.size(); ++end)
        if (text[end] == '\\')
            ++end;
        else if (text[end] == text[i])
            return end + 1;
    return text.size();
}

// The code without comments, the insides of literals and the preprocessor's lines.
std::string BareCode(std::string_view text) {
    std::string bare;
    bool atStart = true; // of a line
    for (std::size_t i = 0; i < text.size();) {
        if (atStart && text[i] == '#') {
            while (i < text.size() && (text[i] != '\n' || text[i - 1] == '\\'))
                ++i;
            continue;
        }
        if (const std::size_t end = BehindLiteral(text, i); end > i) {
            if (text[i] != '/') bare += '0';
            i = end;
            continue;
        }
        atStart = text[i] == '\n' || (atStart && text[i] == ' ');
        bare += text[i++];
    }
    return bare;
}

bool IsOfName(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == ':' || c == '~';
}

// "Binder::Field" of "void Binder::Field(FieldEdit* field", and "" of what is no routine.
std::string NameOfRoutine(std::string_view statement) {
    int angles = 0;
    for (std::size_t i = 0; i < statement.size(); ++i) {
        if (statement[i] == '<') ++angles;
        if (statement[i] == '>') --angles;
        if (angles > 0) continue;
        if (statement[i] == '=') return "";
        if (statement[i] != '(') continue;
        if (statement.substr(i + 1, 1) == "*") return ""; // a place for a function
        std::size_t begin = i;
        while (begin > 0 && IsOfName(statement[begin - 1]))
            --begin;
        const std::string name(statement.substr(begin, i - begin));
        return name == "static_assert" || name == "alignas" || name.ends_with("decltype") ? "" : name;
    }
    return "";
}

std::vector<std::string> WordsOf(std::string_view statement) {
    std::vector<std::string> words{""};
    for (const char c : statement)
        if (IsOfName(c))
            words.back() += c;
        else if (!words.back().empty())
            words.emplace_back();
    if (words.back().empty()) words.pop_back();
    return words;
}

// What a "{" opens: a namespace, the body of a struct or class, or something that is skipped as a whole.
struct Scope {
    enum { Namespace, Hidden, Class, Skipped } Kind = Skipped;
    std::string Name{};
};

Scope ScopeOf(std::string_view statement) {
    const std::vector<std::string> words = WordsOf(statement);
    for (std::size_t w = 0; w < words.size(); ++w) {
        if (words[w] == "namespace") return {words.size() > w + 1 ? Scope::Namespace : Scope::Hidden};
        if (words[w] == "enum") return {};
        if ((words[w] != "struct" && words[w] != "class") ||
            statement.find_first_of("(=") != std::string::npos)
            continue;
        // "class" may stand between angles too: the last one before a name and a "{" or ":" counts.
        if (statement.rfind(words[w] + " ") > statement.rfind('>') ||
            statement.find('<') == std::string::npos)
            return {Scope::Class, words.size() > w + 1 ? words[w + 1] : ""};
    }
    return {};
}

struct Routine {
    std::string Name; // with its classes in front
    bool HasBody = false;
};

// A name for a type, a friend that has its own line elsewhere, and what the compiler makes.
bool IsNoneOfItsOwn(std::string_view statement) {
    for (const std::string& word : WordsOf(statement))
        if (word == "friend" || word == "typedef" || word == "using") return true;
    for (const char* end : {"= 0", "= default", "= delete"})
        if (statement.ends_with(end)) return true;
    return false;
}

// The routines of a text that others can call, in their order.
std::vector<Routine> RoutinesOf(std::string_view source) {
    const std::string text = BareCode(source);
    std::vector<Routine> found;
    std::vector<Scope> scopes;
    std::size_t start = 0;
    int parentheses = 0, skipped = 0; // depth of what is not looked at
    bool hadBody = false;             // the statement that runs, already
    const auto take = [&](std::string_view statement, bool hasBody) {
        const std::string name = NameOfRoutine(statement);
        if (name.empty() || IsNoneOfItsOwn(statement)) return;
        std::string classes;
        for (const Scope& scope : scopes) {
            if (scope.Kind == Scope::Hidden) return;
            if (scope.Kind == Scope::Class) classes += scope.Name + "::";
        }
        found.push_back({classes + name, hasBody});
    };
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::string_view statement = std::string_view(text).substr(start, i - start);
        if (skipped > 0) {
            if (text[i] == '{') ++skipped;
            if (text[i] != '}' || --skipped > 0) continue;
            hadBody = NameOfRoutine(statement).empty(); // of an enumeration or a value: its ";" follows
            if (!hadBody) start = i + 1;
        } else if (text[i] == '(') {
            ++parentheses;
        } else if (text[i] == ')') {
            --parentheses;
        } else if (parentheses > 0) {
            continue;
        } else if (text[i] == ';') {
            if (!hadBody) take(statement, false);
            hadBody = false;
            start = i + 1;
        } else if (text[i] == '{') {
            const Scope scope = ScopeOf(statement);
            if (scope.Kind == Scope::Skipped) {
                take(statement, true);
                skipped = 1;
                continue;
            }
            scopes.push_back(scope);
            start = i + 1;
        } else if (text[i] == '}') {
            if (!scopes.empty()) scopes.pop_back();
            start = i + 1;
        }
    }
    return found;
}

// The routines that a header declares and neither it nor the source of its name defines.
std::string Homeless(std::string_view header, std::string_view source) {
    std::map<std::string, long> missing;
    for (const Routine& routine : RoutinesOf(header))
        missing[routine.Name] += routine.HasBody ? -1 : 1;
    for (const Routine& routine : RoutinesOf(source))
        if (routine.HasBody) --missing[routine.Name];
    std::string names;
    for (const auto& [name, count] : missing)
        if (count > 0) names += name + " ";
    return names;
}

std::string ContentsOf(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

const char* const Folders[] = {"batch",    "bench",    "chart",       "commands",  "examples", "files",
                               "fit",      "forms",    "graphs",      "help",      "input",    "models",
                               "planning", "platform", "persistence", "reporting", "runs",     "scandata",
                               "studies",  "tests",    "workspace"};

TEST(Headers, WhatTheyDeclareStandsInTheSourceOfTheirName) {
    const fs::path root(QUILLON_SOURCE);
    long routines = 0;
    for (const char* folder : Folders)
        for (const auto& entry : fs::recursive_directory_iterator(root / folder)) {
            // The source of this one is made by the build (help/EmbedPages.cmake).
            if (entry.path().extension() != ".h" || entry.path().filename() == "EmbeddedPages.h") continue;
            const std::string header = ContentsOf(entry.path());
            routines += static_cast<long>(RoutinesOf(header).size());
            EXPECT_EQ(Homeless(header, ContentsOf(fs::path(entry.path()).replace_extension(".cpp"))), "")
                << "declared in " << entry.path().lexically_relative(root);
        }
    EXPECT_GT(routines, 1500); // a reader that finds none finds nothing wrong either
}

TEST(Headers, ARoutineThatStandsElsewhereIsFound) {
    const char* header = R"(
        #define NOT_THIS(x) F(x);
        // void NorThis();
        enum class Way { Plain, Guided };
        inline constexpr long Most = 20'000;
        template <class T> struct Holder { T Value{}; T Get() const { return Value; } };
        struct Shape : Base { int Sides() const; private: friend void Other(); using Call = void(int); void (*Place)(int); decltype(&::close) Close; std::function<void(int)> Told;
                              Shape() = default; bool operator==(const Shape&) const = default; };
        void Here(int a = F("{(", ')')); int Here(long);
        std::vector<std::function<void(int)>> There(const std::string& name = "}", Shape = {});
        inline int Inline() { return 1; }
    )";
    const char* source = R"--(
        namespace Quillon { namespace { void There() {} }
        const char* const Text = R"({)";
        void Here(int) { if (true) { } } int Here(long) { return 2; }
        int Shape::Sides() const { return There(); } }
    )--";
    EXPECT_EQ(Homeless(header, source), "There ");
    EXPECT_EQ(Homeless(header, ""), "Here Shape::Sides There ");
    EXPECT_EQ(Homeless("int Here(int); int Here(long);", "int Here(int) { return 1; }"), "Here ");
}

} // namespace
} // namespace Quillon
