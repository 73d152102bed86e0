#include "games/PlayerNumber.h"
#include "support/RecordBytes.h"
#include "support/ScratchData.h"

#include <gtest/gtest.h>

using namespace scorvane;
using namespace scorvane::testing;
using Ints = std::vector<int>;

namespace {

struct PlayerNumberFixture : ::testing::Test, ScratchData {
    Roster roster;

    // Players 7 "Seven", 12 and 30 named, 4 vacant. Results as (game, player, status): 12 has only
    // a deleted one, 9 a live one. Contact details for 2, 7, 9, 12 and 30, each a phone "p<n>".
    PlayerNumberFixture() {
        files = data.team(3);
        const std::vector<RosterRecord> pn{
            {7, "Seven", "x7"}, {12, "Other", "x12"}, {30, "Other", "x30"}};
        const std::vector<StatRecord> ps{{{1, 7, ' ', 'A', '1', '1'}, {100}},
                                         {{2, 12, ' ', 'D', '1', '1'}, {101}},
                                         {{2, 7, ' ', 'D', '1', '1'}, {102}},
                                         {{3, 9, ' ', 'A', '1', '1'}, {103}},
                                         {{4, 4, ' ', 'A', '1', '1'}, {104}}};
        std::vector<PlayerInfoRecord> pi;
        for (std::int16_t n : {2, 7, 9, 12, 30})
            pi.push_back({n, "p" + digits(n), "", "", "", "", "", ""});
        EXPECT_TRUE(files.replaceAllWith(FileKind::Roster, pn) &&
                    files.replaceAllWith(FileKind::Stats, ps) &&
                    files.replaceAllWith(FileKind::PlayerInfo, pi) && roster.load(files));
    }
    // One 16-bit field of every record of a file.
    Ints numbers(const std::string& file, std::size_t length, std::size_t offset) {
        const Bytes b = dir.read(file);
        Ints out;
        for (std::size_t off = 0; off < b.size(); off += length)
            out.push_back(intAt(b, off + offset));
        return out;
    }
    bool change(int oldNumber, const std::string& typed) {
        bool changed = true;
        EXPECT_TRUE(changePlayerNumber(files, roster, prompter, oldNumber, typed, changed));
        return changed;
    }
};

} // namespace

TEST_F(PlayerNumberFixture, RefusedNumbersShowTheirMessageAndWriteNothing) {
    const auto onDisk = [&] {
        return std::vector{dir.read("FBPS3.DAT"), dir.read("FBPN3.DAT"), dir.read("FBPI3.DAT")};
    };
    const auto before = onDisk();
    for (const auto& [typed, text] : std::vector<std::pair<std::string, std::string>>{
             {"0", "Must be 1 to 99!"},
             {"100", "Must be 1 to 99!"},
             {"", "Must be 1 to 99!"},
             {" 7", "Same as old player number!"},
             {"9", "Games already recorded for new number!"}}) {
        prompter.shown.clear();
        EXPECT_FALSE(change(7, typed)) << typed;
        EXPECT_EQ(prompter.shown, (std::vector<Message>{{text, "New Player Number Invalid",
                                                         Buttons::Ok, Icon::Warning, Answer::Ok}}));
    }
    EXPECT_EQ(onDisk(), before);
}

TEST_F(PlayerNumberFixture, APlayerMovesWithResultsNameAndContactDetailsAVacantOneLeavesBoth) {
    EXPECT_TRUE(change(7, "12"));
    // Deleted results move too; the one 12 already had stays his. Nothing else changes.
    EXPECT_EQ(numbers("FBPS3.DAT", 110, 2), (Ints{12, 12, 12, 9, 4}));
    EXPECT_EQ(numbers("FBPS3.DAT", 110, 8), (Ints{100, 101, 102, 103, 104}));
    const Bytes ps = dir.read("FBPS3.DAT");
    EXPECT_EQ(textAt(ps, 4, 2) + textAt(ps, 114, 2) + textAt(ps, 224, 2), " A D D");
    EXPECT_EQ(numbers("FBPN3.DAT", 201, 0), (Ints{12, 30}));
    EXPECT_EQ(textAt(dir.read("FBPN3.DAT"), 2, 20), fit("Seven", 17) + "x7 ");
    EXPECT_EQ(roster.names[7] + roster.names[12], fit("Player 7", 17) + fit("Seven", 17));
    EXPECT_EQ(numbers("FBPI3.DAT", 500, 0), (Ints{2, 9, 12, 30}));
    EXPECT_EQ(textAt(dir.read("FBPI3.DAT"), 1002, 3), "p7 ");

    // Vacant 4 to 30: its results move, 30 ends vacant and keeps its details (4 had none).
    EXPECT_TRUE(change(4, "30"));
    EXPECT_EQ(numbers("FBPS3.DAT", 110, 2), (Ints{12, 12, 12, 9, 30}));
    EXPECT_EQ(numbers("FBPN3.DAT", 201, 0), (Ints{12}));
    EXPECT_FALSE(roster.inUse[4] || roster.inUse[30] || roster.inUse[7]);
    EXPECT_EQ(roster.names[30], fit("Player 30", 17));
    EXPECT_EQ(numbers("FBPI3.DAT", 500, 0), (Ints{2, 9, 12, 30}));
    EXPECT_EQ(textAt(dir.read("FBPI3.DAT"), 1502, 4), "p30 ");
}
