#pragma once

#include <string>
#include <vector>

namespace scorvane {

// One CSV row of UTF-8 fields (RFC 4180: a field holding a comma, a quote or a line break is
// quoted, its quotes doubled), ended with CRLF.
inline std::string csvLine(const std::vector<std::string>& fields) {
    std::string row;
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (i)
            row += ',';
        const std::string& f = fields[i];
        if (f.find_first_of(",\"\r\n") == std::string::npos) {
            row += f;
            continue;
        }
        row += '"';
        for (char c : f)
            row += c == '"' ? std::string("\"\"") : std::string(1, c);
        row += '"';
    }
    return row + "\r\n";
}

} // namespace scorvane
