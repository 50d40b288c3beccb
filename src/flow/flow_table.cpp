#include "flow/flow_table.h"

#include <algorithm>
#include <array>

#include "common/line_reader.h"
#include "common/number_text.h"
#include "common/path_text.h"
#include "common/text.h"

namespace {

constexpr bool SlashSystem = Separator == '/';

enum class PointForm { None, TooLarge, Point };

bool IsSeparator(char c) {
    return c == '\\' || c == '/';
}

/// Whether the path names its file without the program's folder.
bool IsWholePath(std::string_view path) {
    if (SlashSystem && path.front() == '/') {
        return true;
    }
    const bool share = IsSeparator(path[0]) && path.size() > 1 && path[0] == path[1];
    return path.size() > 2 && (share || path[1] == ':');
}

/// Reads the whole line as two numbers; the first piece that is none rejects it.
PointForm ReadPoint(std::string_view line, FlowTablePoint& point) {
    const std::string text = config::NormalizeSeparators(line);
    std::array<double, 2> numbers{};
    std::size_t count = 0;
    for (const std::string_view piece : SplitAtBlanks(text)) {
        if (count == numbers.size()) {
            return PointForm::None;
        }
        switch (ReadNumber(piece, numbers[count])) {
            case NumberForm::None:
                return PointForm::None;
            case NumberForm::TooLarge:
                return PointForm::TooLarge;
            case NumberForm::Number:
                ++count;
        }
    }
    point = {numbers[0], numbers[1]};
    return count == numbers.size() ? PointForm::Point : PointForm::None;
}

/// Takes the points of the text; false if it could not be read to its end.
bool TakePoints(LineReader& lines, FlowTable& table) {
    std::string_view line;
    while (lines.Next(line)) {
        FlowTablePoint point;
        const PointForm form = ReadPoint(line, point);
        if (form == PointForm::TooLarge) {
            return false;
        }
        if (form == PointForm::Point && table.UpperBound() < MostTablePoints) {
            table.Append(point);
        }
    }
    return lines.Intact();
}

}  // namespace

namespace config {

std::string NormalizeSeparators(std::string_view text) {
    std::string result(text);
    std::replace_if(
        result.begin(), result.end(), [](char c) { return c == '\t' || c == ','; }, ' ');
    return result;
}

std::string ResolveTablePath(std::string_view path, std::string_view appPath) {
    if (path.empty() || IsWholePath(path)) {
        return std::string(path);
    }
    if (path.size() > 1 && path[0] == '.' && IsSeparator(path[1])) {
        path.remove_prefix(1);
    }
    if (IsSeparator(path[0])) {
        return std::string(appPath).append(path);
    }
    return JoinPath(appPath, path);
}

bool ReadFlowTable(std::string_view path, std::string_view appPath, FlowTable& table) {
    table.Reset();
    TextFile file;
    if (path.empty() || !OpenTextFile(ResolveTablePath(path, appPath), LargestTableFile, file)) {
        return false;
    }
    return ReadFlowTable(file.Stream, file.Size, table);
}

bool ReadFlowTable(std::istream& input, std::uintmax_t limit, FlowTable& table) {
    table.Reset();
    LineReader lines(input, limit);
    if (TakePoints(lines, table)) {
        return true;
    }
    table.Reset();
    return false;
}

}  // namespace config
