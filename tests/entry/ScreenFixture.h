#pragma once

// The player screen over one team's data directory, for every test of the screen.

#include "entry/PlayerScreen.h"
#include "support/StatBuilders.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

namespace scorvane::testing {

struct ScreenFixture : ::testing::Test, TeamData {
    PlayerScreen screen;

    void open(int game = 1, const std::string& teamName = {}) {
        ASSERT_TRUE(screen.open(files, game, columns, prompter, teamName));
    }
    // Types "field=text field=text ..." into the panel shown.
    void type(const std::string& typed) {
        std::istringstream in(typed);
        for (std::string word; in >> word;) {
            const auto eq = word.find('=');
            screen.editField(std::stoi(word.substr(0, eq)), word.substr(eq + 1));
        }
    }
    // The same into the panel of a row and a category, clicked first.
    void type(int row, int category, const std::string& typed) {
        ASSERT_TRUE(screen.clickCell(row, category));
        type(typed);
    }
    // The last message shown as "text|title"; "" when none was.
    std::string lastMessage() const {
        return prompter.shown.empty()
                   ? ""
                   : prompter.shown.back().text + "|" + prompter.shown.back().title;
    }
    // Adds a kick or a return: "" when it was added, else the message shown as "text|title".
    std::string kick(KickType type, const std::string& yards, std::vector<KickMark> marks = {}) {
        screen.selectKickType(type);
        screen.setKickYards(yards);
        for (KickMark m : marks)
            screen.setKickMark(m, true);
        const std::size_t before = prompter.shown.size();
        const bool added = screen.addKick();
        EXPECT_EQ(added, prompter.shown.size() == before);
        return added ? "" : lastMessage();
    }
    std::string ret(ReturnType type, const std::string& yards, std::vector<ReturnMark> marks = {}) {
        screen.selectReturnType(type);
        screen.setReturnYards(yards);
        for (ReturnMark m : marks)
            screen.setReturnMark(m, true);
        const std::size_t before = prompter.shown.size();
        const bool added = screen.addReturn();
        EXPECT_EQ(added, prompter.shown.size() == before);
        return added ? "" : lastMessage();
    }
    // The statistics file's records.
    std::vector<Bytes> records() const {
        const Bytes all = statsFile();
        std::vector<Bytes> out;
        for (std::size_t at = 0; at + 110 <= all.size(); at += 110)
            out.emplace_back(all.begin() + static_cast<long>(at),
                             all.begin() + static_cast<long>(at + 110));
        return out;
    }
};

} // namespace scorvane::testing
