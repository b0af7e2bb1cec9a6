#include "batch/options/SortOptions.h"

#include "batch/console/OneLine.h"
#include "platform/RuntimeError.h"

#include <charconv>
#include <cmath>
#include <optional>

namespace Quillon {

namespace {

constexpr long MostCells = 99;

std::vector<std::string> ItemsOf(const std::string& text) {
    std::vector<std::string> items;
    std::size_t begin = 0;
    while (true) {
        const std::size_t comma = text.find(',', begin);
        items.push_back(text.substr(begin, comma - begin));
        if (comma == std::string::npos) return items;
        begin = comma + 1;
    }
}

template <class Value> std::optional<Value> WholeNumber(const std::string& text) {
    Value value{};
    const char* const end = text.data() + text.size();
    const auto [stop, failure] = std::from_chars(text.data(), end, value);
    return failure == std::errc{} && stop == end ? std::optional(value) : std::nullopt;
}

std::optional<float> Positive(const std::string& text) {
    const std::optional<float> value = WholeNumber<float>(text);
    return value && *value > 0.0F && std::isfinite(*value) ? value : std::nullopt;
}

WavelengthRatio ReadRatio(const std::string& item) {
    const std::size_t equals = item.find('=');
    const std::size_t colon = item.find(':', equals == std::string::npos ? 0 : equals);
    const auto part = [&](std::size_t from, std::size_t to) { return item.substr(from, to - from); };
    if (equals != std::string::npos) {
        const auto wavelength = Positive(part(0, equals));
        const auto a = Positive(part(equals + 1, colon));
        const auto b = colon == std::string::npos ? a : Positive(item.substr(colon + 1));
        if (wavelength && a && b) return {*wavelength, *a, *b};
    }
    RaiseError("--ratios needs ratios as 260=1.7 or 260=1.7:0.6, not " + Quoted(item));
}

} // namespace

std::vector<long> ReadCells(const std::string& text) {
    std::vector<long> cells;
    for (const std::string& item : ItemsOf(text)) {
        const std::optional<long> cell = WholeNumber<long>(item);
        if (!cell || *cell < 0 || *cell > MostCells)
            RaiseError("--cells needs numbers of cells between commas, not " + Quoted(text));
        cells.push_back(*cell);
    }
    return cells;
}

std::vector<float> ReadNumberList(const char* option, const std::string& text) {
    std::vector<float> numbers;
    for (const std::string& item : ItemsOf(text)) {
        const std::optional<float> number = Positive(item);
        if (!number)
            RaiseError(std::string(option) + " needs numbers above 0 between commas, not " + Quoted(text));
        numbers.push_back(*number);
    }
    return numbers;
}

std::vector<WavelengthRatio> ReadRatios(const std::string& text) {
    std::vector<WavelengthRatio> ratios;
    for (const std::string& item : ItemsOf(text)) {
        ratios.push_back(ReadRatio(item));
        for (std::size_t i = 0; i + 1 < ratios.size(); ++i)
            if (ratios[i].Wavelength == ratios.back().Wavelength)
                RaiseError("--ratios names a wavelength twice in " + Quoted(text));
    }
    return ratios;
}

} // namespace Quillon
