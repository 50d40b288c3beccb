// The rounds that an archive remembers.

#include "platform/qt/sql_store.h"

namespace {

constexpr const char* NewestRounds =
    "SELECT id, begun, ended, loggers, done, CAST(log AS BLOB), CAST(digest AS BLOB) FROM rounds "
    "ORDER BY begun DESC, id DESC LIMIT ?";
constexpr const char* InsertRound =
    "INSERT INTO rounds(begun, ended, loggers, done, log, digest) "
    "VALUES(?, ?, ?, ?, CAST(? AS TEXT), CAST(? AS TEXT)) RETURNING id";
constexpr const char* ChangeRound =
    "UPDATE rounds SET ended = ?, loggers = ?, done = ?, log = CAST(? AS TEXT), "
    "digest = CAST(? AS TEXT) WHERE id = ?";

}  // namespace

std::vector<ArchiveRound> SqlStore::Rounds(int most) {
    std::vector<ArchiveRound> rounds;
    for (SqlRows rows(Prepared(NewestRounds), most); rows.Next();) {
        ArchiveRound round{.Id = rows->Integer(0),
                           .Begin = rows->Integer(1),
                           .Loggers = rows->Integer(3),
                           .Done = rows->Integer(4),
                           .Log = rows->Text(5),
                           .Digest = rows->Text(6)};
        if (!rows->IsNull(2)) {
            round.End = rows->Integer(2);
        }
        rounds.push_back(std::move(round));
    }
    return rounds;
}

void SqlStore::KeepRound(ArchiveRound& round) {
    if (round.Id != 0) {
        SqlStatement& change = Prepared(ChangeRound);
        change.Run(round.End, round.Loggers, round.Done, round.Log, round.Digest, round.Id);
        if (change.Changed() == 1) {
            return;
        }
    }
    SqlRows rows(Prepared(InsertRound), round.Begin, round.End, round.Loggers, round.Done,
                 round.Log, round.Digest);
    static_cast<void>(rows.Next());
    round.Id = rows->Integer(0);
}

void SqlStore::DropRounds(std::int64_t before) {
    Prepared("DELETE FROM rounds WHERE begun < ?").Run(before);
}
