#include "GameScreen.h"

#include "storage/TextUtil.h"

#include <algorithm>

namespace scorvane {

namespace {

int boxValue(const std::string& text) {
    return static_cast<int>(std::clamp<long long>(leadingNumber(text), 0, 999));
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

GameForm::GameForm(char mode, int gameNumber, const GameList& games)
    : mode_(mode), gameNumber_(gameNumber) {
    if (mode_ != 'C')
        return;
    const GameRecord* game = games.game(gameNumber);
    if (!game)
        return;
    fields_.date = game->gameDate;
    fields_.location = trimRight(game->gameLocation);
    fields_.opponent = trimRight(game->opponent);
    for (std::size_t i = 0; i < 5; ++i) {
        fields_.scores[Opp1 + i] = digits(game->opponentScore[i]);
        fields_.scores[Team1 + i] = digits(game->teamScore[i]);
    }
    fields_.comment = trimRight(game->gameComment);
    fields_.gameType = typeOf(game->gameType);
    fields_.home = game->homeFlag == '1';
    fields_.specialSelect = game->specialSelect == '2';
    overtimeFlag_ = game->overtimeFlag;
    tail_ = game->tail;
}

std::string GameForm::modeCaption() const {
    switch (mode_) {
    case 'A':
        return "Add Game";
    case 'I':
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
int sideTotal(const GameForm::Fields& fields, int first) {
    int total = 0;
    for (int b = first; b < first + 5; ++b)
        total += boxValue(fields.scores[static_cast<std::size_t>(b)]);
    return total;
}
} // namespace

int GameForm::teamTotal() const {
    return sideTotal(fields_, Team1);
}

int GameForm::opponentTotal() const {
    return sideTotal(fields_, Opp1);
}

bool GameForm::checkDate(std::string& labelText) {
    std::string date = fit(fields_.date, 6);
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
    r.gameDate = fit(fields_.date, 6);
    r.gameLocation = fit(fields_.location, 20);
    r.opponent = fit(trim(fields_.opponent), 25);
    for (std::size_t i = 0; i < 5; ++i) {
        r.opponentScore[i] = static_cast<std::int16_t>(boxValue(fields_.scores[Opp1 + i]));
        r.teamScore[i] = static_cast<std::int16_t>(boxValue(fields_.scores[Team1 + i]));
    }
    r.gameComment = fit(fields_.comment, 58);
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
    if (mode_ == 'A') {
        s = games.append(files, record);
    } else if (mode_ == 'I') {
        s = games.insert(files, gameNumber_, record);
    } else {
        s = games.change(files, gameNumber_, record);
    }
    if (!s)
        return SaveResult::Failed;
    // The game now exists: saving again changes it rather than adding another.
    if (mode_ == 'A')
        gameNumber_ = games.activeCount();
    mode_ = 'C';
    changed_ = false;
    return SaveResult::Saved;
}

bool GameForm::confirmCancel(Prompter& prompter) const {
    return !changed_ || prompter.ask(cancelQuestion()) == Answer::Yes;
}

bool GameForm::saveBeforePlayers(TeamFiles& files, GameList& games, Prompter& prompter) {
    if (!changed_ || prompter.ask(saveQuestion()) != Answer::Yes)
        return true;
    return save(files, games, prompter) == SaveResult::Saved;
}

bool GameForm::canImport(int currentTeam, Prompter& prompter) const {
    if (fields_.opponentTeam < 1) {
        prompter.ask(notice("Select opponent first", "No Opponent Selected"));
        return false;
    }
    if (fields_.opponentTeam == currentTeam) {
        prompter.ask(notice("Opponent can not be update team", "Incorrect Opponent"));
        return false;
    }
    return true;
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

} // namespace scorvane
