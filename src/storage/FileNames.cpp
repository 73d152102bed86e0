#include "FileNames.h"

#include "Bytes.h"

namespace scorvane {

std::size_t recordLength(FileKind kind) {
    switch (kind) {
    case FileKind::Config:
        return 1018;
    case FileKind::TeamList:
        return 40;
    case FileKind::Roster:
        return 201;
    case FileKind::Games:
        return 200;
    case FileKind::Stats:
        return 110;
    case FileKind::ReportFormats:
        return 167;
    case FileKind::GamesAlt:
        return 200;
    case FileKind::PlayerInfo:
        return 500;
    }
    return 1;
}

std::string normalizeDirectory(std::string_view text) {
    std::string dir = trim(text);
    if (dir.empty())
        return dir;
    const char last = dir.back();
    if (last == '/' || last == '\\')
        return dir;
    const bool backslashOnly =
        dir.find('\\') != std::string::npos && dir.find('/') == std::string::npos;
    dir += backslashOnly ? '\\' : '/';
    return dir;
}

std::string fileName(FileKind kind, const DataPaths& paths, int teamNumber) {
    const std::string team = digits(teamNumber);
    switch (kind) {
    case FileKind::Config:
        return paths.configDirectory + kConfigFileName;
    case FileKind::TeamList:
        return paths.dataDirectory + "FBTEAMS.DAT";
    case FileKind::Roster:
        return paths.dataDirectory + "FBPN" + team + ".DAT";
    case FileKind::Games:
    case FileKind::GamesAlt:
        return paths.dataDirectory + "FBGS" + team + ".DAT";
    case FileKind::Stats:
        return paths.dataDirectory + "FBPS" + team + ".DAT";
    case FileKind::ReportFormats:
        return paths.reportDirectory + "FBRPTFMT.DAT";
    case FileKind::PlayerInfo:
        return paths.dataDirectory + "FBPI" + team + ".DAT";
    }
    return {};
}

std::string suggestedFileName(const std::vector<std::string>& words, const std::string& date,
                              const std::string& extension) {
    std::string name;
    for (const std::string& word : words) {
        std::string kept;
        for (const char c : word) {
            const auto u = static_cast<unsigned char>(c);
            if (u < 0x20 || u == 0x7F ||
                std::string_view("<>:\"/\\|?*").find(c) != std::string_view::npos)
                continue;
            if (c == ' ' && (kept.empty() || kept.back() == ' '))
                continue;
            kept += c;
        }
        while (!kept.empty() && kept.back() == ' ')
            kept.pop_back();
        if (!kept.empty())
            name += kept + ' ';
    }
    return name + date + extension;
}

} // namespace scorvane
