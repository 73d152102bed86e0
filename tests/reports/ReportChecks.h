#pragma once

#include "reports/Statistics.h"

#include <iterator>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

// What the report tests read a report's output by, and compare its figures by.
namespace scorvane::testing {

using Strings = std::vector<std::string>;

// The parts of a text between its separators; an empty last part when it ends in one.
inline Strings split(const std::string& text, const std::string& separator) {
    Strings out;
    for (std::size_t start = 0;;) {
        const std::size_t at = text.find(separator, start);
        out.push_back(text.substr(start, at - start));
        if (at == std::string::npos)
            return out;
        start = at + separator.size();
    }
}

// The words of a printed line.
inline Strings words(const std::string& line) {
    std::istringstream in(line);
    return {std::istream_iterator<std::string>(in), std::istream_iterator<std::string>()};
}

// The rows of a CSV text, each split at its commas (no field of the test data needs quoting).
inline std::vector<Strings> csvRows(const std::string& csv) {
    std::vector<Strings> rows;
    for (const std::string& line : split(csv, "\r\n"))
        if (!line.empty())
            rows.push_back(split(line, ","));
    return rows;
}

// Every part of a figure, to compare two figures whole.
inline auto figureKey(const Figure& f) {
    return std::tuple(f.value, f.ratio, f.made, f.attempted, f.overflow);
}

} // namespace scorvane::testing
