#include <algorithm>
#include <sstream>

#include "common/line_reader.h"
#include "common/number_text.h"
#include "common/text.h"
#include "flow/flow_table.h"
#include "flow/rating_device.h"

namespace {

constexpr std::size_t FewestFigures = 2;

/// The line with every separator a blank and every decimal mark a full stop.
std::string Plain(std::string_view line) {
    std::string text(line);
    std::erase(text, '"');
    if (text.find_first_of("\t;") != std::string::npos) {
        std::replace(text.begin(), text.end(), ',', '.');
        std::replace(text.begin(), text.end(), ';', ' ');
    }
    return config::NormalizeSeparators(text);
}

/// The figures of a line; nothing if it is no row of so many columns.
std::optional<RatingRow> ReadRow(std::string_view line, std::size_t columns) {
    const std::string text = Plain(line);
    RatingRow row{};
    std::size_t count = 0;
    for (const std::string_view piece : SplitAtBlanks(text)) {
        const std::optional<double> figure = WholeNumber(piece);
        if (!figure || count == columns) {
            return std::nullopt;
        }
        row[count++] = *figure;
    }
    return count >= FewestFigures ? std::optional(row) : std::nullopt;
}

}  // namespace

std::string RatingRowsText(const RatingDevice& device) {
    std::string text;
    for (const RatingRow& row : device.Rows) {
        for (std::size_t i = 0; i < device.Kind->Columns.size(); ++i) {
            text += (i > 0 ? "\t" : "") + DoubleToText(row[i]);
        }
        text += LineBreak;
    }
    return text;
}

RatingRowsRead SetRatingRowsText(RatingDevice& device, std::string_view text) {
    RatingRowsRead read;
    device.Rows.clear();
    std::istringstream stream{std::string(text)};
    LineReader lines(stream);
    std::string_view line;
    while (lines.Next(line)) {
        const std::optional<RatingRow> row = ReadRow(line, device.Kind->Columns.size());
        if (!row) {
            read.PassedOver += line.find_first_not_of(" \t") == std::string_view::npos ? 0 : 1;
        } else if (device.Rows.size() == MostRatingRows) {
            ++read.Beyond;
        } else {
            device.Rows.push_back(*row);
            ++read.Taken;
        }
    }
    read.PassedOver += lines.PassedOver();
    return read;
}
