#include "RosterImport.h"

#include "storage/Cp1252.h"
#include "storage/RecordFile.h"

#include <algorithm>
#include <cctype>
#include <map>

namespace scorvane {

namespace {

// The columns a line can have, in the order of a line without a header.
enum Column { Number, Name, Phone, Address1, Address2, City, State, Zip, Other, ColumnCount };

constexpr std::array<const char*, kContactFieldCount> kLabels = {
    "phone", "address line 1", "address line 2", "city", "state", "zip code", "other information"};

// What the file keeps of each contact field: the widths of the player information record.
constexpr std::array<std::size_t, kContactFieldCount> kStoredWidths = {
    width::phone, width::address, width::address, width::city,
    width::state, width::zip,     width::other};

ContactField contactOf(int column) {
    return static_cast<ContactField>(column - Phone);
}

struct Record {
    int line = 0;
    std::vector<std::string> fields;
    bool unclosedQuote = false;
};

// RFC 4180 records; a line break is CR LF, LF or CR alone. Line numbers count the file's lines.
std::vector<Record> splitRecords(const std::string& text) {
    std::vector<Record> records;
    std::size_t i = 0;
    int line = 1;
    auto atLineBreak = [&](std::size_t at) { return text[at] == '\r' || text[at] == '\n'; };
    auto skipLineBreak = [&] {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n')
            ++i;
        ++i;
        ++line;
    };
    while (i < text.size()) {
        Record r;
        r.line = line;
        for (;;) {
            std::string field;
            if (i < text.size() && text[i] == '"') {
                ++i;
                bool closed = false;
                while (i < text.size()) {
                    if (text[i] == '"') {
                        if (i + 1 < text.size() && text[i + 1] == '"') {
                            field += '"';
                            i += 2;
                            continue;
                        }
                        ++i;
                        closed = true;
                        break;
                    }
                    if (atLineBreak(i)) {
                        // A line break inside quotes belongs to the field; the file's line
                        // count goes on.
                        const bool crlf =
                            text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
                        field += '\n';
                        i += crlf ? 2 : 1;
                        ++line;
                        continue;
                    }
                    field += text[i++];
                }
                if (!closed)
                    r.unclosedQuote = true;
                // Text after the closing quote is kept, as spreadsheets do.
                while (i < text.size() && text[i] != ',' && !atLineBreak(i))
                    field += text[i++];
            } else {
                while (i < text.size() && text[i] != ',' && !atLineBreak(i))
                    field += text[i++];
            }
            r.fields.push_back(std::move(field));
            if (i < text.size() && text[i] == ',') {
                ++i;
                continue;
            }
            break;
        }
        if (i < text.size())
            skipLineBreak();
        records.push_back(std::move(r));
    }
    return records;
}

bool isValidUtf8(const std::string& s) {
    std::size_t i = 0;
    while (i < s.size()) {
        const auto c = static_cast<unsigned char>(s[i]);
        std::size_t extra = 0;
        unsigned int code = 0;
        if (c < 0x80) {
            ++i;
            continue;
        } else if ((c & 0xE0) == 0xC0) {
            extra = 1;
            code = c & 0x1F;
        } else if ((c & 0xF0) == 0xE0) {
            extra = 2;
            code = c & 0x0F;
        } else if ((c & 0xF8) == 0xF0) {
            extra = 3;
            code = c & 0x07;
        } else {
            return false;
        }
        if (i + extra >= s.size())
            return false;
        for (std::size_t k = 1; k <= extra; ++k) {
            const auto cc = static_cast<unsigned char>(s[i + k]);
            if ((cc & 0xC0) != 0x80)
                return false;
            code = (code << 6) | (cc & 0x3F);
        }
        const unsigned int least[] = {0, 0x80, 0x800, 0x10000};
        if (code < least[extra] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF))
            return false;
        i += extra + 1;
    }
    return true;
}

// A header name reduced to letters, digits and "#", in lower case.
std::string headerKey(const std::string& text) {
    std::string key;
    for (char c : text) {
        const auto u = static_cast<unsigned char>(c);
        if (std::isalnum(u) || c == '#')
            key += static_cast<char>(std::tolower(u));
    }
    return key;
}

int headerColumn(const std::string& text) {
    static const std::map<std::string, int> names = {
        {"number", Number},
        {"no", Number},
        {"num", Number},
        {"nr", Number},
        {"jersey", Number},
        {"jerseynumber", Number},
        {"playernumber", Number},
        {"name", Name},
        {"player", Name},
        {"playername", Name},
        {"phone", Phone},
        {"phonenumber", Phone},
        {"telephone", Phone},
        {"tel", Phone},
        {"address", Address1},
        {"address1", Address1},
        {"addressline1", Address1},
        {"street", Address1},
        {"address2", Address2},
        {"addressline2", Address2},
        {"city", City},
        {"town", City},
        {"state", State},
        {"province", State},
        {"zip", Zip},
        {"zipcode", Zip},
        {"postalcode", Zip},
        {"postcode", Zip},
        {"other", Other},
        {"otherinformation", Other},
        {"notes", Other},
        {"note", Other},
        {"comments", Other},
    };
    const std::string key = headerKey(text);
    if (!key.empty() && key.back() == '#') // "#", "Jersey #", "Player #"
        return Number;
    const auto it = names.find(key);
    return it == names.end() ? -1 : it->second;
}

bool allDigits(const std::string& s) {
    return !s.empty() &&
           std::all_of(s.begin(), s.end(), [](char c) { return c >= '0' && c <= '9'; });
}

bool isBlank(const Record& r) {
    return std::all_of(r.fields.begin(), r.fields.end(),
                       [](const std::string& f) { return trim(f).empty(); });
}

std::string quoted(const std::string& utf8) {
    return "\"" + utf8 + "\"";
}

class Parser {
public:
    Parser(RosterImportFile& out, bool utf8) : out_(out), utf8_(utf8) {}

    void problem(int line, const std::string& text) {
        out_.problems.push_back({line, "Line " + digits(line) + ": " + text});
    }

    // The field as shown in a message (UTF-8) and as stored (Windows-1252); false when the
    // roster's files cannot hold its characters.
    bool convert(const std::string& raw, std::string& shown, std::string& stored) const {
        if (!utf8_) {
            stored = raw;
            shown = cp1252ToUtf8(raw);
            return true;
        }
        shown = raw;
        stored = utf8ToCp1252(raw);
        return cp1252ToUtf8(stored) == raw;
    }

    // The columns of the file: from the header, or in the order of a line without one.
    bool readHeader(const Record& r) {
        int known = 0;
        for (const std::string& f : r.fields)
            known += headerColumn(f) >= 0 ? 1 : 0;
        if (known == 0 || allDigits(trim(r.fields.front())))
            return false;
        out_.header = true;
        for (const std::string& f : r.fields) {
            const int column = headerColumn(f);
            if (column >= 0 &&
                std::find(columns_.begin(), columns_.end(), column) != columns_.end()) {
                problem(r.line, "the column " + quoted(trim(f)) + " is named twice.");
                columns_.push_back(-1);
                continue;
            }
            columns_.push_back(column);
            if (column < 0 && !trim(f).empty())
                out_.ignoredColumns.push_back(trim(f));
        }
        for (auto [column, what] : {std::pair{Number, "number"}, std::pair{Name, "name"}})
            if (std::find(columns_.begin(), columns_.end(), column) == columns_.end())
                problem(r.line, std::string("the header names no ") + what + " column.");
        return true;
    }

    void readPlayer(const Record& r, std::map<int, int>& lineOfNumber) {
        if (r.unclosedQuote) {
            problem(r.line, "a quoted field is not closed.");
            return;
        }
        std::array<std::optional<std::string>, ColumnCount> values;
        if (out_.header) {
            for (std::size_t i = 0; i < r.fields.size(); ++i) {
                const int column = i < columns_.size() ? columns_[i] : -1;
                if (column >= 0)
                    values[static_cast<std::size_t>(column)] = r.fields[i];
                else if (i >= columns_.size() && !trim(r.fields[i]).empty()) {
                    problem(r.line, "there are more fields than the header names.");
                    return;
                }
            }
            // A column the header names is in the file for every player, empty when the line
            // ends early.
            for (int column : columns_)
                if (column >= 0 && !values[static_cast<std::size_t>(column)])
                    values[static_cast<std::size_t>(column)] = std::string();
        } else {
            std::size_t count = r.fields.size();
            while (count > ColumnCount && trim(r.fields[count - 1]).empty())
                --count;
            if (count > ColumnCount) {
                problem(r.line, digits(static_cast<long long>(count)) +
                                    " fields; a line holds at most 9: number, name, phone, "
                                    "address line 1, address line 2, city, state, zip code and "
                                    "other information.");
                return;
            }
            for (std::size_t i = 0; i < count; ++i)
                values[i] = r.fields[i];
        }

        ImportedPlayer p;
        p.line = r.line;
        bool good = true;
        const std::string numberText = trim(values[Number].value_or(""));
        std::string shownNumber, ignored;
        convert(numberText, shownNumber, ignored);
        if (numberText.empty()) {
            problem(r.line, "the player number is missing.");
            good = false;
        } else if (!allDigits(numberText)) {
            problem(r.line, quoted(shownNumber) + " is not a player number.");
            good = false;
        } else {
            const long long n = numberText.size() > 6 ? 1000000 : std::stoll(numberText);
            if (!isPlayerNumber(static_cast<int>(n))) {
                problem(r.line, "the number " + shownNumber + " is not between 1 and 99.");
                good = false;
            } else {
                p.number = static_cast<int>(n);
                if (const auto it = lineOfNumber.find(p.number); it != lineOfNumber.end()) {
                    problem(r.line, "number " + digits(p.number) + " is already on line " +
                                        digits(it->second) + ".");
                    good = false;
                } else {
                    lineOfNumber[p.number] = r.line;
                }
            }
        }

        auto take = [&](const std::string& raw, const char* label, std::size_t width,
                        std::string& stored) {
            std::string shown;
            const std::string text = trim(raw);
            if (!convert(text, shown, stored)) {
                problem(r.line, std::string("the ") + label + " " + quoted(shown) +
                                    " has characters the roster cannot keep.");
                return false;
            }
            if (stored.size() > width) {
                problem(r.line, std::string("the ") + label + " " + quoted(shown) +
                                    " is longer than " + digits(static_cast<long long>(width)) +
                                    " characters.");
                return false;
            }
            return true;
        };
        if (trim(values[Name].value_or("")).empty()) {
            problem(r.line, (p.number ? "player " + digits(p.number) : std::string("the player")) +
                                " has no name.");
            good = false;
        } else {
            good = take(*values[Name], "name", width::playerName, p.name) && good;
        }
        for (int column = Phone; column < ColumnCount; ++column) {
            const auto& value = values[static_cast<std::size_t>(column)];
            if (!value)
                continue;
            const auto f = static_cast<std::size_t>(contactOf(column));
            std::string stored;
            if (take(*value, kLabels[f], kStoredWidths[f], stored))
                p.contacts[f] = stored;
            else
                good = false;
        }
        if (good)
            out_.players.push_back(std::move(p));
    }

    // The column of each field of a line; -1 for a header name the roster has no field for.
    std::vector<int> columns_;

private:
    RosterImportFile& out_;
    bool utf8_;
};

} // namespace

std::string contactFieldLabel(ContactField field) {
    return kLabels[static_cast<std::size_t>(field)];
}

RosterImportFile parseRosterCsv(const Bytes& bytes) {
    RosterImportFile out;
    std::string text(bytes.begin(), bytes.end());
    if (text.starts_with("\xEF\xBB\xBF")) {
        text.erase(0, 3);
        out.utf8 = true;
    } else {
        out.utf8 = isValidUtf8(text);
    }
    Parser parser(out, out.utf8);
    std::map<int, int> lineOfNumber;
    bool first = true;
    for (const Record& r : splitRecords(text)) {
        if (isBlank(r) && !r.unclosedQuote)
            continue;
        if (first) {
            first = false;
            parser.columns_.clear();
            if (parser.readHeader(r)) {
                if (!out.problems.empty())
                    break; // without its columns no line can be read
                continue;
            }
            parser.columns_ = {Number, Name, Phone, Address1, Address2, City, State, Zip, Other};
        }
        parser.readPlayer(r, lineOfNumber);
    }
    if (first)
        out.problems.push_back({0, "The file holds no players."});
    std::stable_sort(
        out.problems.begin(), out.problems.end(),
        [](const ImportProblem& a, const ImportProblem& b) { return a.line < b.line; });
    return out;
}

Status readRosterCsv(const std::string& path, RosterImportFile& file) {
    file = {};
    Bytes bytes;
    bool exists = false;
    if (Status s = readWholeFile(path, bytes, exists); !s)
        return s;
    if (!exists)
        return Status::error(ErrorKind::Unreadable, platform::shownPath(path) + " was not found.");
    file = parseRosterCsv(bytes);
    return Status::ok();
}

ImportPlan planRosterImport(const RosterImportFile& file, const Roster& roster,
                            const RosterEditor& editor) {
    ImportPlan plan;
    for (const ImportedPlayer& p : file.players) {
        ImportRow row;
        row.number = p.number;
        row.name = p.name;
        const auto n = static_cast<std::size_t>(p.number);
        const bool inUse = roster.inUse[n];
        if (inUse) {
            row.oldName = trimRight(roster.names[n]);
            if (fit(row.oldName, width::playerName) != fit(p.name, width::playerName))
                row.fields.push_back("name");
        }
        for (std::size_t f = 0; f < kContactFieldCount; ++f) {
            const auto field = static_cast<ContactField>(f);
            if (p.contacts[f] && trim(editor.contact(p.number, field)) != *p.contacts[f])
                row.fields.push_back(kLabels[f]);
        }
        if (!inUse) {
            row.action = ImportAction::Add;
            ++plan.added;
        } else if (!row.fields.empty()) {
            row.action = ImportAction::Change;
            ++plan.changed;
        } else {
            ++plan.unchanged;
        }
        plan.rows.push_back(std::move(row));
    }
    std::sort(plan.rows.begin(), plan.rows.end(),
              [](const ImportRow& a, const ImportRow& b) { return a.number < b.number; });
    return plan;
}

std::string describePlan(const ImportPlan& plan) {
    auto players = [](int n) { return digits(n) + (n == 1 ? " player" : " players"); };
    std::vector<std::string> parts;
    if (plan.added)
        parts.push_back("adds " + players(plan.added));
    if (plan.changed)
        parts.push_back("changes " + players(plan.changed));
    if (plan.unchanged)
        parts.push_back("leaves " + players(plan.unchanged) + " unchanged");
    if (parts.empty())
        return "The import changes nothing.";
    std::string text = "The import ";
    for (std::size_t i = 0; i < parts.size(); ++i)
        text += (i == 0 ? "" : i + 1 == parts.size() ? " and " : ", ") + parts[i];
    return text + ".";
}

void applyRosterImport(const RosterImportFile& file, RosterEditor& editor) {
    if (!file.ok())
        return;
    const int selected = editor.selected();
    for (const ImportedPlayer& p : file.players) {
        editor.select(p.number);
        editor.nameEntered(p.name);
        for (std::size_t f = 0; f < kContactFieldCount; ++f)
            if (p.contacts[f])
                editor.contactEntered(static_cast<ContactField>(f), *p.contacts[f]);
    }
    editor.select(selected);
}

} // namespace scorvane
