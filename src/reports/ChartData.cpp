#include "ChartData.h"

#include "storage/Bytes.h"
#include "storage/TextUtil.h"

namespace scorvane {

QuarterPoints quarterPoints(const std::vector<GameScore>& games) {
    QuarterPoints out;
    for (const GameScore& g : games)
        for (std::size_t q = 0; q < 5; ++q) {
            out.team[q] += g.team[q];
            out.opponents[q] += g.opponentPoints[q];
        }
    return out;
}

double figureNumber(char category, int code, const Figure& figure) {
    if (figure.overflow)
        return 0.0;
    switch (columnKind(category, code)) {
    case ColumnKind::Ratio:
    case ColumnKind::Average:
        return figure.ratio;
    case ColumnKind::MadeAttempted:
        return static_cast<double>(figure.made);
    case ColumnKind::Sacks:
        return static_cast<double>(figure.value) / 10.0;
    default:
        return static_cast<double>(figure.value);
    }
}

std::vector<double> columnByGame(const GameLog& log, int code, std::vector<std::string>& labels) {
    std::vector<double> values;
    labels.clear();
    for (const GameLogEntry& e : log.games) {
        values.push_back(figureNumber(log.category, code, e.figures[code]));
        labels.push_back(e.game.gameDate == "000000" ? "Game " + digits(e.game.gameNumber)
                                                     : ShortDate(e.game.gameDate));
    }
    return values;
}

} // namespace scorvane
