#include "GameScreen.h"

#include "storage/TextUtil.h"

#include <algorithm>

namespace scorvane {

namespace {

// A score box's number. Boxes take three digits, so only a stored value the user left alone can be
// larger; it is kept as it is.
long long boxValue(const std::string& text) {
    return leadingNumber(text);
}

int typeOf(char letter) {
    GameRecord probe;
    probe.gameType = letter;
    const int type = probe.gameTypeNumber();
    return type > 0 ? type : 1;
}

Message notice(std::string text, std::string title) {
    return {std::move(text), std::move(title), Buttons::Ok, Icon::Warning, Answer::Ok};
}

} // namespace

GameForm::GameForm(EntryMode mode, int gameNumber, const GameList& games)
    : mode_(mode), gameNumber_(gameNumber) {
    if (mode_ != EntryMode::Change)
        return;
    const GameRecord* game = games.game(gameNumber);
    if (!game)
        return;
    fields_.date = game->gameDate;
    fields_.location = trimRight(game->gameLocation);
    fields_.opponent = trimRight(game->opponent);
    for (std::size_t i = 0; i < 5; ++i) {
        stored_[Opp1 + i] = game->opponentScore[i];
        stored_[Team1 + i] = game->teamScore[i];
    }
    for (std::size_t b = 0; b < BoxCount; ++b)
        fields_.scores[b] = digits(stored_[b]);
    storedTexts_ = fields_.scores;
    pointsOverflow_ = !game->pointSums();
    fields_.comment = trimRight(game->gameComment);
    fields_.gameType = typeOf(game->gameType);
    fields_.home = game->homeFlag == '1';
    fields_.specialSelect = game->specialSelect == '2';
    overtimeFlag_ = game->overtimeFlag;
    tail_ = game->tail;
}

std::string GameForm::modeCaption() const {
    switch (mode_) {
    case EntryMode::Add:
        return "Add Game";
    case EntryMode::Insert:
        return "Insert Game";
    default:
        return "Change Game";
    }
}

bool GameForm::acceptsScoreKey(int key) {
    return (key >= '0' && key <= '9') || key == 8 || key == 127;
}

namespace {
// The sum of the five boxes of one side, starting at `first`.
long long sideTotal(const GameForm::Fields& fields, int first) {
    long long total = 0;
    for (int b = first; b < first + 5; ++b)
        total += boxValue(fields.scores[static_cast<std::size_t>(b)]);
    return total;
}
} // namespace

long long GameForm::teamTotal() const {
    return sideTotal(fields_, Team1);
}

long long GameForm::opponentTotal() const {
    return sideTotal(fields_, Opp1);
}

bool GameForm::checkDate(std::string& labelText) {
    std::string date = fit(fields_.date, width::gameDate);
    labelText.clear();
    if (date == "      ") {
        fields_.date = "000000";
        return true;
    }
    std::replace(date.begin(), date.end(), ' ', '0');
    fields_.date = date;
    if (date == "000000")
        return true;
    labelText = LongDate(date);
    return labelText != "ERROR";
}

GameRecord GameForm::toRecord() const {
    GameRecord r;
    r.gameNumber = static_cast<std::int16_t>(gameNumber_);
    r.gameStatus = 'A';
    r.gameDate = fit(fields_.date, width::gameDate);
    r.gameLocation = fit(fields_.location, width::gameLocation);
    r.opponent = fit(trim(fields_.opponent), width::opponent);
    for (std::size_t i = 0; i < 5; ++i) {
        r.opponentScore[i] = scoreToStore(Opp1 + i);
        r.teamScore[i] = scoreToStore(Team1 + i);
    }
    r.gameComment = fit(fields_.comment, width::gameComment);
    r.gameType = static_cast<char>('0' + std::clamp(fields_.gameType, 1, 7));
    r.homeFlag = fields_.home ? '1' : '2';
    r.specialSelect = fields_.specialSelect ? '2' : '1';
    r.overtimeFlag = overtimeFlag_;
    r.tail = tail_;
    return r;
}

GameForm::SaveResult GameForm::save(TeamFiles& files, GameList& games, Prompter& prompter) {
    std::string label;
    if (!checkDate(label)) {
        prompter.ask(invalidDateMessage());
        return SaveResult::InvalidDate;
    }
    if (boxValue(fields_.scores[OppOT]) != 0 || boxValue(fields_.scores[TeamOT]) != 0)
        overtimeFlag_ = -1;
    else if (teamTotal() == opponentTotal())
        overtimeFlag_ = prompter.ask(overtimeQuestion()) == Answer::Yes ? -1 : 0;
    else
        overtimeFlag_ = 0;

    GameRecord record = toRecord();
    Status s;
    if (mode_ == EntryMode::Add) {
        s = games.append(files, record);
    } else if (mode_ == EntryMode::Insert) {
        s = games.insert(files, gameNumber_, record);
    } else {
        s = games.change(files, gameNumber_, record);
    }
    if (!s)
        return SaveResult::Failed;
    // The game now exists: saving again changes it rather than adding another.
    if (mode_ == EntryMode::Add)
        gameNumber_ = games.activeCount();
    mode_ = EntryMode::Change;
    changed_ = false;
    return SaveResult::Saved;
}

std::int16_t GameForm::scoreToStore(std::size_t box) const {
    // A box the user did not touch keeps the stored value, whatever it is.
    if (storedTexts_ && fields_.scores[box] == (*storedTexts_)[box])
        return stored_[box];
    return static_cast<std::int16_t>(std::clamp<long long>(boxValue(fields_.scores[box]), 0, 999));
}

bool GameForm::reportOverflow(Prompter& prompter) const {
    if (!pointsOverflow_)
        return false;
    prompter.ask(overflowMessage());
    return true;
}

bool GameForm::confirmCancel(Prompter& prompter) const {
    return !changed_ || prompter.ask(cancelQuestion()) == Answer::Yes;
}

bool GameForm::saveBeforePlayers(TeamFiles& files, GameList& games, Prompter& prompter) {
    if (!changed_ || prompter.ask(saveQuestion()) != Answer::Yes)
        return true;
    return save(files, games, prompter) == SaveResult::Saved;
}

GameForm::ImportCheck GameForm::checkImport(int currentTeam, Prompter& prompter) const {
    if (fields_.opponentTeam < 1) {
        prompter.ask(notice("Select opponent first", "No Opponent Selected"));
        return ImportCheck::NoOpponent;
    }
    if (fields_.opponentTeam == currentTeam) {
        prompter.ask(notice("Opponent can not be update team", "Incorrect Opponent"));
        return ImportCheck::SameTeam;
    }
    return ImportCheck::Ok;
}

void GameForm::applyImport(const GameRecord& theirs, bool withComment) {
    fields_.date = theirs.gameDate;
    fields_.location = trimRight(theirs.gameLocation);
    // Their points against are ours, and their home game is our away game.
    for (std::size_t i = 0; i < 5; ++i) {
        fields_.scores[Team1 + i] = digits(theirs.opponentScore[i]);
        fields_.scores[Opp1 + i] = digits(theirs.teamScore[i]);
    }
    fields_.home = theirs.homeFlag == '2';
    fields_.gameType = typeOf(theirs.gameType);
    if (withComment)
        fields_.comment = trimRight(theirs.gameComment);
    markChanged();
}

Message GameForm::overflowMessage() {
    return notice("Overflow", "Error");
}

Message GameForm::invalidDateMessage() {
    return notice("Enter game date (MMDDYY)", "Game Date Invalid");
}

Message GameForm::overtimeQuestion() {
    return {"Was this an overtime game?", "Overtime Game?", Buttons::YesNo, Icon::Question,
            Answer::No};
}

Message GameForm::cancelQuestion() {
    return {"Do you really want to cancel?", "Game Information Changed!", Buttons::YesNo,
            Icon::Question, Answer::No};
}

Message GameForm::saveQuestion() {
    return {"Save game information?", "Game Information Changed!", Buttons::YesNo, Icon::Question,
            Answer::Yes};
}

Status listOpponentGames(TeamFiles& opponent, const ConfigRecord& config,
                         std::vector<ImportChoice>& choices) {
    choices.clear();
    std::vector<GameRecord> games;
    if (Status s = opponent.readAllAs(FileKind::Games, games); !s)
        return s;
    for (std::size_t i = 0; i < games.size(); ++i) {
        if (games[i].isLive())
            choices.push_back({static_cast<int>(i) + 1, GameList::line(games[i], config)});
    }
    return Status::ok();
}

Status readOpponentGame(TeamFiles& opponent, int position, GameRecord& game) {
    return opponent.gameRecord(Access::Read, position, game);
}

bool GameForm::importFrom(TeamFiles& opponent, int position, bool withComment, Prompter& prompter) {
    GameRecord theirs;
    const Status s = readOpponentGame(opponent, position, theirs);
    if (s.kind() == ErrorKind::Overflow) {
        prompter.ask(overflowMessage());
        return false;
    }
    // Any other failure was shown by the disk error handler.
    if (!s)
        return false;
    applyImport(theirs, withComment);
    return true;
}

} // namespace scorvane
