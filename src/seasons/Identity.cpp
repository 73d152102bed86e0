#include "Identity.h"

#include "storage/Bytes.h"

#include <map>
#include <numeric>
#include <set>
#include <utility>

namespace scorvane {
namespace {

// The base letters of Windows-1252 0xC0..0xFF, upper case; "" where the character is no letter.
constexpr std::array<const char*, 64> kFolded = {
    "A", "A", "A", "A", "A", "A", "AE", "C", "E", "E", "E", "E", "I", "I", "I",  "I",
    "D", "N", "O", "O", "O", "O", "O",  "",  "O", "U", "U", "U", "U", "Y", "TH", "SS",
    "A", "A", "A", "A", "A", "A", "AE", "C", "E", "E", "E", "E", "I", "I", "I",  "I",
    "D", "N", "O", "O", "O", "O", "O",  "",  "O", "U", "U", "U", "U", "Y", "TH", "Y"};

std::string foldCharacter(unsigned char c) {
    if (c >= 'a' && c <= 'z')
        return std::string(1, static_cast<char>(c - 'a' + 'A'));
    if (c >= 0xC0) {
        const char* base = kFolded[c - 0xC0];
        return *base ? base : std::string(1, static_cast<char>(c));
    }
    switch (c) {
    case 0x8A: // Š
    case 0x9A: // š
        return "S";
    case 0x8C: // Œ
    case 0x9C: // œ
        return "OE";
    case 0x8E: // Ž
    case 0x9E: // ž
        return "Z";
    case 0x9F: // Ÿ
        return "Y";
    default:
        return std::string(1, static_cast<char>(c));
    }
}

struct UnionFind {
    std::vector<int> parent;
    explicit UnionFind(std::size_t n) : parent(n) { std::iota(parent.begin(), parent.end(), 0); }
    int root(int x) {
        while (parent[static_cast<std::size_t>(x)] != x) {
            parent[static_cast<std::size_t>(x)] =
                parent[static_cast<std::size_t>(parent[static_cast<std::size_t>(x)])];
            x = parent[static_cast<std::size_t>(x)];
        }
        return x;
    }
    void join(int a, int b) { parent[static_cast<std::size_t>(root(a))] = root(b); }
};

} // namespace

std::string identityKey(std::string_view cp1252) {
    std::string key;
    for (char c : trim(cp1252))
        key += foldCharacter(static_cast<unsigned char>(c));
    return key;
}

People identifyPlayers(const std::vector<SeasonRoster>& seasons,
                       const std::vector<PlayerLink>& links) {
    constexpr std::size_t kSlots = kMaxPlayers + 1;
    const auto node = [&](std::size_t season, int number) {
        return static_cast<int>(season * kSlots + static_cast<std::size_t>(number));
    };
    UnionFind sets(seasons.size() * kSlots);
    std::vector<std::array<std::string, kSlots>> keys(seasons.size());
    std::map<std::string, std::vector<int>> byName; // key -> nodes, season by season
    for (std::size_t s = 0; s < seasons.size(); ++s)
        for (int n = 1; n <= kMaxPlayers; ++n) {
            std::string key = identityKey(seasons[s].names[static_cast<std::size_t>(n)]);
            if (!key.empty())
                byName[key].push_back(node(s, n));
            keys[s][static_cast<std::size_t>(n)] = std::move(key);
        }

    const auto seasonOf = [&](const std::string& label) {
        for (std::size_t s = 0; s < seasons.size(); ++s)
            if (seasons[s].label == label)
                return static_cast<int>(s);
        return -1;
    };
    // The unlinked pairs, as (season, key) pairs in either order.
    std::set<std::pair<std::pair<int, std::string>, std::pair<int, std::string>>> apart;
    for (const PlayerLink& l : links) {
        if (!l.unlink)
            continue;
        const std::pair a{seasonOf(l.first.season), identityKey(l.first.name)};
        const std::pair b{seasonOf(l.second.season), identityKey(l.second.name)};
        apart.insert({a, b});
        apart.insert({b, a});
    }

    // Matching names of two different seasons, unless the user told them apart.
    for (const auto& [key, nodes] : byName)
        for (std::size_t i = 0; i < nodes.size(); ++i)
            for (std::size_t j = i + 1; j < nodes.size(); ++j) {
                const int si = nodes[i] / static_cast<int>(kSlots);
                const int sj = nodes[j] / static_cast<int>(kSlots);
                if (si == sj || apart.count({{si, key}, {sj, key}}) != 0)
                    continue;
                sets.join(nodes[i], nodes[j]);
            }
    // The user's links, between every number of either name in its season.
    for (const PlayerLink& l : links) {
        if (l.unlink)
            continue;
        const int sa = seasonOf(l.first.season);
        const int sb = seasonOf(l.second.season);
        const std::string ka = identityKey(l.first.name);
        const std::string kb = identityKey(l.second.name);
        if (sa < 0 || sb < 0 || ka.empty() || kb.empty())
            continue;
        for (int a = 1; a <= kMaxPlayers; ++a)
            for (int b = 1; b <= kMaxPlayers; ++b)
                if (keys[static_cast<std::size_t>(sa)][static_cast<std::size_t>(a)] == ka &&
                    keys[static_cast<std::size_t>(sb)][static_cast<std::size_t>(b)] == kb)
                    sets.join(node(static_cast<std::size_t>(sa), a),
                              node(static_cast<std::size_t>(sb), b));
    }

    People people;
    people.person.resize(seasons.size());
    std::map<int, int> indexOfRoot;
    for (std::size_t s = 0; s < seasons.size(); ++s)
        for (std::size_t n = 0; n < kSlots; ++n) {
            const int root = sets.root(node(s, static_cast<int>(n)));
            auto [it, added] = indexOfRoot.try_emplace(root, people.count);
            if (added)
                ++people.count;
            people.person[s][n] = it->second;
        }
    return people;
}

} // namespace scorvane
