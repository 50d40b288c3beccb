#include "archive/store_fixture.h"

#include "archive/postgres_server.h"

namespace testing_support {

std::vector<BenchKind> AllBenches() {
    return {{"Sqlite",
             []() -> std::unique_ptr<ArchiveBench> { return std::make_unique<SqliteBench>(); }},
            {"Server",
             []() -> std::unique_ptr<ArchiveBench> { return std::make_unique<PostgresBench>(); }}};
}

}  // namespace testing_support
