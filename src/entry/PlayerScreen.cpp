#include "PlayerScreen.h"

#include "EntryFields.h"

#include "games/GameList.h"
#include "storage/TextUtil.h"

#include <algorithm>

namespace scorvane {

namespace {

std::size_t at(int i) {
    return static_cast<std::size_t>(i);
}

constexpr int kKicking = 4;
constexpr int kReturns = 5;

PlayerScreen::Heading headingOf(const GameRecord& game, const std::string& teamName) {
    PlayerScreen::Heading h;
    h.gameNumber = "Game " + digits(game.gameNumber);
    h.date = game.gameDate == "000000" ? "" : LongDate(game.gameDate);
    h.location = trimRight(game.gameLocation);
    std::string team = "Overflow", opponent = "Overflow";
    if (const auto points = game.pointSums()) {
        team = digits(points->team);
        opponent = digits(points->opponent);
    }
    const std::string opponentName = trimRight(game.opponent);
    if (game.homeFlag == '1') {
        h.homeName = teamName, h.homeScore = team;
        h.visitorName = opponentName, h.visitorScore = opponent;
    } else {
        h.homeName = opponentName, h.homeScore = opponent;
        h.visitorName = teamName, h.visitorScore = team;
    }
    return h;
}

} // namespace

Status PlayerScreen::open(TeamFiles& files, int gameNumber, const ColumnTable& columns,
                          Prompter& prompter, const std::string& teamName) {
    Roster roster;
    if (Status s = roster.load(files); !s)
        return s;
    GameRecord found;
    bool there = false;
    if (Status s = GameList::readGame(files, gameNumber, found, there); !s)
        return s;
    if (!there)
        return Status::error(ErrorKind::RecordRange, "There is no game " + digits(gameNumber));
    const GameRecord* game = &found;
    // The game's records are found by a search of the statistics file and read.
    GameStatsIndex index;
    GameStatRecords records;
    if (Status s = files.indexGameStats(*game, index, &records); !s)
        return s;

    files_ = &files;
    prompter_ = &prompter;
    columns_ = &columns;
    game_ = *game;
    heading_ = headingOf(game_, teamName);
    results_.load(records, index);
    counters_ = index.counters;
    playerChanged_ = resultsChanged_ = totalsShown_ = filling_ = false;
    status_.clear();
    focus_ = {};
    saveStatus_ = Status::ok();
    kick_ = {};
    return_ = {};
    category_ = 0;
    player_ = 0;
    fillRows(roster);
    if (rows_.empty()) {
        showPanel();
        selected_ = {};
    } else {
        selectPlayer(0, 0);
    }
    return Status::ok();
}

// --- state
// ----------------------------------------------------------------------------------------

bool PlayerScreen::ballMark(int row, int category) const {
    if (row < 0 || row >= static_cast<int>(rows_.size()) || category < 0 ||
        category >= kCategoryCount)
        return false;
    return results_.at(rows_[at(row)].number, category).played;
}

std::string PlayerScreen::counterText(int category) const {
    return digits(counters_.at(at(category)));
}

int PlayerScreen::currentRow() const {
    for (std::size_t i = 0; i < rows_.size(); ++i)
        if (rows_[i].number == player_)
            return static_cast<int>(i);
    return -1;
}

std::string PlayerScreen::playerNameText() const {
    if (totalsShown_)
        return "Team Totals";
    const int row = currentRow();
    if (row < 0)
        return player_ == 0 ? "" : digits(player_);
    const std::string name = trim(rows_[at(row)].name);
    return name.empty() ? digits(player_) : name;
}

std::string PlayerScreen::statTypeText() const {
    return std::string(kCategoryNames[at(category_)]);
}

bool PlayerScreen::fieldShown(int field) const {
    return scorvane::fieldShown(categoryLetter(), field);
}

std::string PlayerScreen::fieldCaption(int field) const {
    const EnteredField* f = StatLayout::of(categoryLetter())->byScreenField(field);
    if (!f || !columns_)
        return "";
    return trimRight(columns_->columnName(categoryLetter(), f->column));
}

const std::string& PlayerScreen::fieldText(int field) const {
    return texts_.at(at(field));
}

bool PlayerScreen::played() const {
    return player_ != 0 && current().played;
}

CategoryResults& PlayerScreen::current() {
    return results_.at(player_, category_);
}
const CategoryResults& PlayerScreen::current() const {
    return results_.at(player_, category_);
}

int PlayerScreen::firstField() const {
    return StatLayout::of(categoryLetter())->lastOwnField() < 0 ? kFirstUserField : 0;
}

void PlayerScreen::setFocusField(int field) {
    focus_ = {Focus::Target::Field, field};
}

int PlayerScreen::nextFieldAfterEnter(int field) const {
    return scorvane::nextFieldAfterEnter(categoryLetter(), field);
}

// --- selecting a player
// ---------------------------------------------------------------------------

void PlayerScreen::fillRows(const Roster& roster) {
    rows_.clear();
    for (int n = 1; n <= kMaxPlayers; ++n)
        if (roster.inUse[at(n)])
            rows_.push_back({n, trimRight(roster.names[at(n)])});
}

// The panel's texts become the current player's results. The team totals are never taken over:
// while they are shown the panel holds no player's entries.
void PlayerScreen::takeOver() {
    if (totalsShown_ || player_ == 0)
        return;
    CategoryResults& r = current();
    for (const auto& f : StatLayout::of(categoryLetter())->fields())
        // Texts that do not fit were refused by the checks; the screen's own texts always fit.
        if (const auto v = storedValue(texts_[at(f.screenField)], f.scale))
            r.values[at(f.screenField)] = *v;
}

// Steps 2 to 4 of a click on the player table.
void PlayerScreen::selectPlayer(int row, int column) {
    takeOver();
    playerChanged_ = false;
    player_ = rows_[at(row)].number;
    if (column >= 0 && column < kCategoryColumns)
        category_ = column;
    totalsShown_ = false;
    showPanel();
    selected_ = {row, column};
}

void PlayerScreen::showPanel() {
    Filling filling(*this);
    texts_.fill("");
    const char letter = categoryLetter();
    for (const auto& f : StatLayout::of(letter)->fields()) {
        const long long value = player_ == 0 ? 0 : current().values[at(f.screenField)];
        texts_[at(f.screenField)] = storedValueText(value, f.scale);
    }
    kickItems_ = player_ == 0 ? std::vector<std::string>{}
                              : scorvane::kickItems(results_.at(player_, kKicking).plays);
    returnItems_ = player_ == 0 ? std::vector<std::string>{}
                                : scorvane::returnItems(results_.at(player_, kReturns).plays);
    kickSelection_ = returnSelection_ = -1;
}

bool PlayerScreen::clickCell(int row, int column) {
    focus_ = {};
    if (row < 0 || row >= static_cast<int>(rows_.size()))
        return false;
    const bool leavesPanel = rows_[at(row)].number != player_ ||
                             (column >= 0 && column < kCategoryColumns && column != category_);
    if ((leavesPanel && !settleSetUpPlay()) || (playerChanged_ && !validateCategory())) {
        selected_ = {currentRow(), category_};
        return false;
    }
    selectPlayer(row, column);
    return true;
}

bool PlayerScreen::validateCategory() {
    const auto problem = checkPanel(categoryLetter(), texts_);
    if (!problem)
        return true;
    prompter_->ask(problemMessage(*problem));
    setFocusField(problem->focusField);
    return false;
}

// --- editing
// --------------------------------------------------------------------------------------

void PlayerScreen::markEdited() {
    playerChanged_ = resultsChanged_ = true;
    selected_ = {currentRow(), category_};
    CategoryResults& r = current();
    if (!r.played) {
        r.played = true;
        ++counters_[at(category_)];
    }
}

std::string PlayerScreen::editField(int field, std::string_view text) {
    focus_ = {};
    if (field < 0 || field >= kEntryFieldCount)
        return "";
    std::string& held = texts_[at(field)];
    if (totalsShown_)
        return held;
    std::string kept = filterFieldText(categoryLetter(), field, text);
    if (kept == held)
        return kept;
    held = kept;
    if (!filling_ && player_ != 0 && fieldShown(field))
        markEdited();
    return kept;
}

void PlayerScreen::clickPlayed() {
    focus_ = {};
    if (totalsShown_ || player_ == 0 || filling_)
        return;
    // Unticking removes what will be saved, so it is a change of the results like any edit.
    resultsChanged_ = true;
    CategoryResults& r = current();
    if (!r.played) {
        r.played = true;
        ++counters_[at(category_)];
        return;
    }
    r.played = false;
    --counters_[at(category_)];
    r.values.fill(0);
    r.plays = PlayList{};
    {
        Filling filling(*this);
        texts_.fill("0");
    }
    if (category_ == kKicking) {
        kickItems_.clear();
        kickSelection_ = -1;
    } else if (category_ == kReturns) {
        returnItems_.clear();
        returnSelection_ = -1;
    }
    setFocusField(firstField());
}

void PlayerScreen::fieldFocused(int field) {
    status_ = fieldDescription(categoryLetter(), field);
}
void PlayerScreen::fieldLeft() {
    status_.clear();
}
void PlayerScreen::tableFocused() {
    status_ = "Player Table - Click on Table to Select";
}
void PlayerScreen::playedFocused() {
    status_ = "Played In Game";
}

void PlayerScreen::buttonFocused(Button button) {
    switch (button) {
    case Button::Ok:
        status_ = "Save All Player Results Entered";
        break;
    case Button::Cancel:
        status_ = "Cancel All Player Results Entered";
        break;
    case Button::GameScreen:
        status_ = "Go To Game Screen";
        break;
    case Button::Roster:
        status_ = "Update Roster";
        break;
    case Button::TeamTotals: // has no status text of its own
        break;
    }
}

// --- kicks and returns
// ----------------------------------------------------------------------------

bool PlayerScreen::canEnterPlays(char category) const {
    return !totalsShown_ && player_ != 0 && categoryLetter() == category;
}

void PlayerScreen::selectKickType(KickType type) {
    if (!totalsShown_)
        kick_.select(type);
}

std::string PlayerScreen::setKickYards(std::string_view text) {
    if (!totalsShown_ && kick_.yardsAvailable())
        kick_.yards = filterKickYardsText(text);
    return kick_.yards;
}

void PlayerScreen::setKickMark(KickMark mark, bool on) {
    if (!totalsShown_)
        kick_.setMark(mark, on);
}

bool PlayerScreen::addKick() {
    focus_ = {};
    if (!canEnterPlays('K'))
        return false;
    PlayList& plays = current().plays;
    if (const auto problem = checkKick(playCount(plays), kick_)) {
        prompter_->ask(playProblemMessage(*problem));
        if (problem->focusYards)
            focus_ = {Focus::Target::KickYards, -1};
        return false;
    }
    const ListEntry kick = kickPlay(kick_);
    appendPlay(plays, kick);
    kickItems_.push_back(kickItemText(kick, true));
    kickSelection_ = static_cast<int>(kickItems_.size()) - 1;
    markEdited();
    kick_.reset();
    return true;
}

void PlayerScreen::selectKickItem(int item) {
    kickSelection_ = item >= 0 && item < static_cast<int>(kickItems_.size()) ? item : -1;
}

bool PlayerScreen::deleteKick(int selected) {
    focus_ = {};
    if (!canEnterPlays('K'))
        return false;
    PlayList& plays = current().plays;
    if (const auto problem = checkKickDelete(static_cast<int>(kickItems_.size()), selected)) {
        prompter_->ask(playProblemMessage(*problem));
        return false;
    }
    removePlay(plays, selected);
    kickItems_.erase(kickItems_.begin() + selected);
    kickSelection_ = std::min(selected, static_cast<int>(kickItems_.size()) - 1);
    markEdited();
    return true;
}

void PlayerScreen::selectReturnType(ReturnType type) {
    if (!totalsShown_)
        return_.type = type;
}

std::string PlayerScreen::setReturnYards(std::string_view text) {
    if (!totalsShown_)
        return_.yards = filterKickYardsText(text);
    return return_.yards;
}

void PlayerScreen::setReturnMark(ReturnMark mark, bool on) {
    if (!totalsShown_)
        return_.setMark(mark, on);
}

bool PlayerScreen::addReturn() {
    focus_ = {};
    if (!canEnterPlays('T'))
        return false;
    PlayList& plays = current().plays;
    if (const auto problem = checkReturn(playCount(plays), return_)) {
        prompter_->ask(playProblemMessage(*problem));
        if (problem->focusYards)
            focus_ = {Focus::Target::ReturnYards, -1};
        return false;
    }
    const ListEntry ret = returnPlay(return_);
    appendPlay(plays, ret);
    returnItems_.push_back(returnItemText(ret));
    returnSelection_ = static_cast<int>(returnItems_.size()) - 1;
    markEdited();
    return_.reset();
    return true;
}

void PlayerScreen::selectReturnItem(int item) {
    returnSelection_ = item >= 0 && item < static_cast<int>(returnItems_.size()) ? item : -1;
}

bool PlayerScreen::deleteReturn(int selected) {
    focus_ = {};
    if (!canEnterPlays('T'))
        return false;
    PlayList& plays = current().plays;
    if (const auto problem = checkReturnDelete(static_cast<int>(returnItems_.size()), selected)) {
        prompter_->ask(playProblemMessage(*problem));
        return false;
    }
    removePlay(plays, selected);
    returnItems_.erase(returnItems_.begin() + selected);
    returnSelection_ = std::min(selected, static_cast<int>(returnItems_.size()) - 1);
    markEdited();
    return true;
}

// --- team totals
// ----------------------------------------------------------------------------------

bool PlayerScreen::toggleTeamTotals() {
    focus_ = {};
    if (totalsShown_) {
        // Back to the players: the current player is selected again as by a click.
        const int row = currentRow();
        if (row >= 0) {
            selectPlayer(row, category_);
        } else {
            totalsShown_ = false;
            showPanel();
        }
        return true;
    }
    if (!settleSetUpPlay() || (playerChanged_ && !validateCategory())) {
        selected_ = {currentRow(), category_};
        return false;
    }
    takeOver();
    playerChanged_ = false;
    totalsShown_ = true;
    totals_ = teamTotals(categoryLetter(), results_);
    {
        Filling filling(*this);
        texts_ = totals_.fields;
    }
    if (category_ == kKicking)
        kickItems_ = totals_.items;
    if (category_ == kReturns)
        returnItems_ = totals_.items;
    kickSelection_ = returnSelection_ = -1;
    status_ = playersRecordedText(counters_[at(category_)]);
    return true;
}

// --- leaving
// --------------------------------------------------------------------------------------

Message PlayerScreen::cancelQuestion() {
    return {"Do you really want to cancel?", "Player Statistics Changed!", Buttons::YesNo,
            Icon::Question, Answer::No};
}

// Enter keeps what was entered: Yes is the default.
Message PlayerScreen::saveQuestion() {
    return {"Save player statistics?", "Player Statistics Changed!", Buttons::YesNo, Icon::Question,
            Answer::Yes};
}

Message PlayerScreen::addKickQuestion(const std::string& item) {
    return {"The kick you set up (" + item + ") is not on the list. Add it now?", "Kick Not Added",
            Buttons::YesNo, Icon::Question, Answer::Yes};
}

Message PlayerScreen::addReturnQuestion(const std::string& item) {
    return {"The return you set up (" + item + ") is not on the list. Add it now?",
            "Return Not Added", Buttons::YesNo, Icon::Question, Answer::Yes};
}

// A kick or return set up in its panel but not added is not dropped without a word when the user
// leaves the panel (another player or category, Team Totals, OK, Game Screen, Roster); nor may it
// stay set up to be added later to another player. Yes, the default, adds it with the usual
// checks; when they refuse it the user stays, with the cursor in the panel. No drops it.
bool PlayerScreen::settleSetUpPlay() {
    if (totalsShown_ || player_ == 0)
        return true;
    if (category_ == kKicking && kick_.setUp()) {
        const std::string item = trimRight(kickItemText(kickPlay(kick_), true));
        if (prompter_->ask(addKickQuestion(item)) != Answer::Yes) {
            kick_.reset();
            return true;
        }
        if (addKick())
            return true;
        if (kick_.yardsAvailable())
            focus_ = {Focus::Target::KickYards, -1};
        return false;
    }
    if (category_ == kReturns && return_.setUp()) {
        const std::string item = trimRight(returnItemText(returnPlay(return_)));
        if (prompter_->ask(addReturnQuestion(item)) != Answer::Yes) {
            return_.reset();
            return true;
        }
        if (addReturn())
            return true;
        focus_ = {Focus::Target::ReturnYards, -1};
        return false;
    }
    return true;
}

// Checks and takes over the current entries before the screen saves or the roster opens.
bool PlayerScreen::checkBeforeLeaving() {
    if (!settleSetUpPlay()) {
        selected_ = {currentRow(), category_};
        return false;
    }
    if (!playerChanged_)
        return true;
    if (!validateCategory()) {
        selected_ = {currentRow(), category_};
        return false;
    }
    takeOver();
    playerChanged_ = false;
    return true;
}

Status PlayerScreen::save() {
    Status s = saveGameResults(*files_, game_, results_);
    if (s)
        resultsChanged_ = false;
    return s;
}

PlayerScreen::Leave PlayerScreen::ok() {
    focus_ = {};
    if (!checkBeforeLeaving())
        return Leave::Stay;
    if (resultsChanged_ && !(saveStatus_ = save()))
        return Leave::Stay;
    return Leave::GameList;
}

PlayerScreen::Leave PlayerScreen::cancel() {
    focus_ = {};
    if (!resultsChanged_ || prompter_->ask(cancelQuestion()) == Answer::Yes)
        return Leave::GameList;
    setFocusField(firstField());
    return Leave::Stay;
}

PlayerScreen::Leave PlayerScreen::toGameScreen() {
    focus_ = {};
    if (resultsChanged_ && prompter_->ask(saveQuestion()) != Answer::Yes)
        return Leave::GameScreen;
    if (!checkBeforeLeaving())
        return Leave::Stay;
    // Written even when nothing changed (a file that would come out the same is left alone).
    if (!(saveStatus_ = save()))
        return Leave::Stay;
    return Leave::GameScreen;
}

bool PlayerScreen::prepareRoster() {
    focus_ = {};
    return !totalsShown_ && checkBeforeLeaving();
}

void PlayerScreen::rosterClosed(const Roster& roster) {
    focus_ = {};
    fillRows(roster);
    int row = currentRow();
    if (row < 0)
        row = rows_.empty() ? -1 : 0;
    if (row >= 0) {
        // Selected as by a click in the PASSING column; the entries were checked and taken
        // over before the roster opened.
        if (!clickCell(row, 0))
            selected_ = {currentRow(), category_};
        return;
    }
    takeOver();
    playerChanged_ = false;
    player_ = 0;
    category_ = 0;
    showPanel();
    selected_ = {};
}

} // namespace scorvane
