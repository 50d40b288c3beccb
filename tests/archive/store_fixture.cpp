#include "archive/store_fixture.h"

#ifndef _WIN32
#include "archive/postgres_server.h"
#endif

namespace testing_support {

std::vector<BenchKind> AllBenches() {
    std::vector<BenchKind> benches = {{"Sqlite", []() -> std::unique_ptr<ArchiveBench> {
                                           return std::make_unique<SqliteBench>();
                                       }}};
#ifndef _WIN32
    benches.push_back({"Server", []() -> std::unique_ptr<ArchiveBench> {
                           return std::make_unique<PostgresBench>();
                       }});
#endif
    return benches;
}

}  // namespace testing_support
