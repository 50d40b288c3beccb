#ifndef ORVIA_TESTS_FLOW_FLOW_SUPPORT_H
#define ORVIA_TESTS_FLOW_FLOW_SUPPORT_H

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include "logger/logger_state.h"
#include "platform/host.h"

/// The program's folder of one test: empty at first, gone at its end.
class ProgramFolder {
 public:
    ProgramFolder() : path_(Fresh()) { std::filesystem::create_directories(path_); }
    ~ProgramFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(path_, ignored);
    }
    ProgramFolder(const ProgramFolder&) = delete;
    ProgramFolder& operator=(const ProgramFolder&) = delete;

    [[nodiscard]] std::string Path() const { return path_.string(); }
    [[nodiscard]] std::string PathOf(std::string_view name) const {
        return (path_ / name).string();
    }

    /// Writes a file of exactly these bytes; returns its full name.
    std::string Write(std::string_view name, std::string_view bytes) const {
        std::ofstream file(path_ / name, std::ios::binary);
        file << bytes;
        return PathOf(name);
    }

 private:
    static std::filesystem::path Fresh() {
        const ::testing::TestInfo* test = ::testing::UnitTest::GetInstance()->current_test_info();
        std::string name = std::string("orvia_") + test->test_suite_name() + "_" + test->name();
        for (char& c : name) {
            c = c == '/' ? '_' : c;
        }
        std::filesystem::path path = std::filesystem::temp_directory_path() / name;
        std::filesystem::remove_all(path);
        return path;
    }

    std::filesystem::path path_;
};

/// Keeps every box that is shown and answers OK.
class RecordingBoxes : public MessageBoxes {
 public:
    BoxAnswer Show(const BoxContent& box) override {
        Shown.push_back(box);
        return BoxAnswer::Ok;
    }
    std::vector<BoxContent> Shown;
};

/// A table of these points.
inline FlowTable TableOf(const std::vector<FlowTablePoint>& points) {
    FlowTable table;
    for (const FlowTablePoint& point : points) {
        table.Append(point);
    }
    return table;
}

#endif  // ORVIA_TESTS_FLOW_FLOW_SUPPORT_H
