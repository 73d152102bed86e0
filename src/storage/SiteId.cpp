#include "SiteId.h"

#include "Bytes.h"
#include "RecordFile.h"

namespace scorvane {

namespace {

bool blank(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool idCharacter(char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '-';
}

} // namespace

std::string siteIdFileName(const DataPaths& paths, int team) {
    return paths.dataDirectory + "FBSITE" + digits(team) + ".TXT";
}

std::string trimmedSiteId(std::string_view typed) {
    while (!typed.empty() && blank(typed.front()))
        typed.remove_prefix(1);
    while (!typed.empty() && blank(typed.back()))
        typed.remove_suffix(1);
    return std::string(typed);
}

std::optional<std::string> siteIdProblem(std::string_view id) {
    for (const char c : id)
        if (!idCharacter(c))
            return "The high-school site ID may hold only letters, digits and hyphens (-).";
    if (!id.empty() && id.size() != kSiteIdLength)
        return "The high-school site ID must be " + digits(static_cast<long long>(kSiteIdLength)) +
               " characters long (this one has " + digits(static_cast<long long>(id.size())) +
               "), or empty for none.";
    return std::nullopt;
}

Status readSiteId(const DataPaths& paths, int team, std::string& id) {
    id.clear();
    Bytes contents;
    bool exists = false;
    if (Status s = readWholeFile(siteIdFileName(paths, team), contents, exists); !s)
        return s;
    std::string text(contents.begin(), contents.end());
    if (text.starts_with("\xEF\xBB\xBF")) // saved by an editor that marks UTF-8
        text.erase(0, 3);
    id = trimmedSiteId(std::string_view(text).substr(0, text.find_first_of("\r\n")));
    return Status::ok();
}

Status writeSiteId(const DataPaths& paths, int team, const std::string& id) {
    const std::string path = siteIdFileName(paths, team);
    if (id.empty())
        return removeFile(path);
    const std::string line = id + "\r\n";
    const Bytes bytes(line.begin(), line.end());
    return writeFileAtomically(path, FileContents(bytes));
}

} // namespace scorvane
