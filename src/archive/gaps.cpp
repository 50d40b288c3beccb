#include "archive/gaps.h"

SeriesBreaks FindBreaks(const SeriesTimes& times) {
    SeriesBreaks breaks;
    for (std::size_t record = 1; record < times.Count(); ++record) {
        const PairKind kind = times.Pair(record);
        if (kind != PairKind::Joined) {
            std::vector<RecordBreak>& list =
                kind == PairKind::Gap ? breaks.Gaps : breaks.ClockChanges;
            list.push_back({record, times.At(record - 1), times.At(record)});
        }
    }
    return breaks;
}
