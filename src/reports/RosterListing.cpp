#include "RosterListing.h"

#include "storage/Bytes.h"
#include "storage/TextUtil.h"

#include <algorithm>

namespace scorvane {
namespace {

constexpr std::size_t kIndent = 5; // under the name: "NN - "
constexpr std::size_t kNarrowestRule = 40;

std::string contactText(const ContactLookup& contact, int playerNumber, ContactField field) {
    return contact ? trim(contact(playerNumber, field)) : std::string();
}

std::string joined(const std::string& a, const std::string& separator, const std::string& b) {
    if (a.empty())
        return b;
    if (b.empty())
        return a;
    return a + separator + b;
}

} // namespace

std::vector<std::string> rosterEntry(int playerNumber, const std::string& name,
                                     const ContactLookup& contact) {
    std::vector<std::string> lines = {AlignText(digits(playerNumber), 2, 'L') + " - " +
                                      trimRight(name)};
    auto field = [&](ContactField f) { return contactText(contact, playerNumber, f); };
    const std::string place =
        joined(joined(field(ContactField::City), ", ", field(ContactField::State)), "  ",
               field(ContactField::Zip));
    for (const std::string& text :
         {field(ContactField::Phone), field(ContactField::Address1), field(ContactField::Address2),
          place, field(ContactField::Other)})
        if (!text.empty())
            lines.push_back(std::string(kIndent, ' ') + text);
    return lines;
}

std::vector<std::string> rosterPages(const std::string& teamName, const Roster& roster,
                                     const ContactLookup& contact, const PrintOptions& options) {
    PageParts parts;
    parts.title = options.title.empty() ? "Roster" : options.title;
    parts.subtitles = {teamName};
    std::size_t widest = kNarrowestRule;
    for (int n = 1; n <= kMaxPlayers; ++n) {
        if (!roster.inUse[static_cast<std::size_t>(n)])
            continue;
        std::vector<std::string> entry =
            rosterEntry(n, roster.names[static_cast<std::size_t>(n)], contact);
        for (const auto& line : entry)
            widest = std::max(widest, line.size());
        // The blank line after an entry goes with it, so no page starts with one.
        entry.emplace_back();
        parts.groups.push_back(entry.size());
        parts.body.insert(parts.body.end(), entry.begin(), entry.end());
    }
    if (!parts.body.empty()) {
        parts.body.pop_back();
        --parts.groups.back();
    }
    parts.headings = {std::string(widest, '-')};
    if (parts.body.empty())
        parts.body = {"No Players"};
    return layOutPages(parts, options.linesPerPage);
}

} // namespace scorvane
