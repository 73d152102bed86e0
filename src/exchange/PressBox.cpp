#include "PressBox.h"

#include "PressBoxPlays.h"

#include "storage/TextUtil.h"

#include <pugixml.hpp>

#include <algorithm>

namespace scorvane {

const std::string* PressBoxPlayer::stat(std::string_view element,
                                        std::string_view attribute) const {
    const auto e = stats.find(std::string(element));
    if (e == stats.end())
        return nullptr;
    const auto a = e->second.find(std::string(attribute));
    return a == e->second.end() ? nullptr : &a->second;
}

// The line of a place in the text, counted from 1.
int lineAt(std::string_view text, std::ptrdiff_t offset) {
    if (offset < 0)
        return 0;
    const auto end = static_cast<std::size_t>(
        std::min<std::ptrdiff_t>(offset, static_cast<std::ptrdiff_t>(text.size())));
    return 1 +
           static_cast<int>(std::count(text.begin(), text.begin() + static_cast<long>(end), '\n'));
}

namespace {

std::string attr(const pugi::xml_node& node, const char* name) {
    return node.attribute(name).as_string();
}

// A period's number: "1".."4" the quarters, anything above overtime.
int periodNumber(const pugi::xml_node& lineprd) {
    return lineprd.attribute("prd").as_int(0);
}

} // namespace

PressBoxRead readPressBox(std::string_view xml) {
    PressBoxRead read;
    pugi::xml_document doc;
    const pugi::xml_parse_result parsed =
        doc.load_buffer(xml.data(), xml.size(), pugi::parse_default, pugi::encoding_auto);
    if (!parsed) {
        read.error = "The file is not readable XML (line " + digits(lineAt(xml, parsed.offset)) +
                     ": " + parsed.description() + ").";
        return read;
    }
    const pugi::xml_node root = doc.document_element();
    if (std::string_view(root.name()) != "fbgame") {
        read.error = "The file is not a football game from the press box: its first element is <" +
                     std::string(root.name()) + ">, not <fbgame>.";
        return read;
    }
    PressBoxGame game;
    const pugi::xml_node venue = root.child("venue");
    game.date = attr(venue, "date");
    game.location = attr(venue, "location");
    if (trim(game.location).empty())
        game.location = attr(venue, "stadium");

    for (const pugi::xml_node& t : root.children("team")) {
        PressBoxTeam team;
        const std::string vh = attr(t, "vh");
        team.vh = vh == "H" || vh == "h" ? 'H' : 'V';
        team.id = attr(t, "id");
        team.name = attr(t, "name");
        team.line = lineAt(xml, t.offset_debug());
        const pugi::xml_node linescore = t.child("linescore");
        team.score = linescore.attribute("score").as_int(0);
        for (const pugi::xml_node& p : linescore.children("lineprd")) {
            const int prd = periodNumber(p);
            if (prd < 1 || prd > 99)
                continue;
            if (team.periods.size() < static_cast<std::size_t>(prd))
                team.periods.resize(static_cast<std::size_t>(prd), 0);
            team.periods[static_cast<std::size_t>(prd - 1)] = p.attribute("score").as_int(0);
        }
        for (const pugi::xml_node& p : t.children("player")) {
            PressBoxPlayer player;
            player.name = attr(p, "name");
            player.uni = attr(p, "uni");
            if (trim(player.uni).empty())
                player.uni = attr(p, "code");
            player.line = lineAt(xml, p.offset_debug());
            for (const pugi::xml_node& s : p.children()) {
                if (s.type() != pugi::node_element)
                    continue;
                auto& attributes = player.stats[s.name()];
                for (const pugi::xml_attribute& a : s.attributes())
                    attributes[a.name()] = a.value();
            }
            team.players.push_back(std::move(player));
        }
        game.teams.push_back(std::move(team));
    }
    if (game.teams.empty()) {
        read.error = "The file has no team: a press-box game lists each side in a <team> element.";
        return read;
    }
    game.hasPlays = readPlays(xml, root, game, read.error);
    if (!read.error.empty())
        return read;
    read.game = std::move(game);
    return read;
}

} // namespace scorvane
