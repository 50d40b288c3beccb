#include "flow/rating_file.h"

#include <algorithm>
#include <sstream>

#include "common/line_reader.h"
#include "common/number_text.h"
#include "common/path_text.h"
#include "common/text.h"
#include "flow/unit_names.h"

namespace {

constexpr std::string_view EndOfLine = "\r\n";

// The words that headings begin with. Those that the reader looks for end in a colon.
constexpr std::string_view Title =
    "Flow table made from a device: level in feet, flow in cubic feet per second.";
constexpr std::string_view KindWord = "Device:";
constexpr std::string_view NameWord = "Name:";
constexpr std::string_view LengthWord = "Length-unit:";
constexpr std::string_view FlowWord = "Flow-unit:";
constexpr std::string_view FieldWord = "Dimension:";
constexpr std::string_view RowWord = "Row:";

constexpr int LengthUnits = 4;
constexpr int FlowUnits = 5;
constexpr std::size_t LongestName = 200;

/// A text that stays on its line.
std::string OneLine(std::string_view text) {
    std::string line(text.substr(0, LongestName));
    std::replace_if(
        line.begin(), line.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return std::string(Trim(line));
}

void WriteDevice(std::ostream& file, const RatingDevice& device) {
    const auto line = [&](std::string_view word, std::string_view text) {
        file << word << ' ' << OneLine(text) << EndOfLine;
    };
    line(LengthWord, IntegerToText(device.LengthUnit) + " - " +
                         ToLower(config::LengthUnitName(device.LengthUnit, true)));
    line(KindWord, std::string(device.Kind->Key) + " - " + std::string(device.Kind->Caption));
    if (!OneLine(device.Name).empty()) {
        line(NameWord, device.Name);
    }
    line(FlowWord, IntegerToText(device.FlowUnit) + " - " + config::FlowUnitName(device.FlowUnit));
    for (std::size_t i = 0; i < device.Values.size(); ++i) {
        const RatingField& field = device.Kind->Fields[i];
        std::string text = std::string(field.Key) + " = " + DoubleToText(device.Values[i]) + " - " +
                           std::string(field.Caption) + ": ";
        const std::string shown = RatingFieldText(device, i);
        text += shown.empty() ? "left to the method" : shown;
        const std::string unit = RatingUnitText(device, field.Units);
        line(FieldWord,
             text + (shown.empty() || unit.empty() ? "" : " ") + (shown.empty() ? "" : unit));
    }
    for (const RatingRow& row : device.Rows) {
        std::string text;
        for (std::size_t i = 0; i < device.Kind->Columns.size(); ++i) {
            text += DoubleToText(row[i]) + " ";
        }
        line(RowWord, text);
    }
}

void WriteRating(std::ostream& file, const RatingDevice& device, const Rating& rating) {
    const auto line = [&](std::string_view word, std::string_view text) {
        file << word << ' ' << text << EndOfLine;
    };
    for (const std::string& equation : rating.Equations) {
        line("Equation:", equation);
    }
    for (const std::string& source : rating.Sources) {
        line("Source:", source);
    }
    line("Range:", RatingRangeText(rating, device.LengthUnit, device.FlowUnit));
    line("Uncertainty:", RatingUncertaintyText(rating));
    for (const RatingRemark& remark : rating.Remarks) {
        line(remark.Weight == RatingWeight::Note ? "Note:" : "Caution:", remark.Text);
    }
    file << "level flow" << EndOfLine;
    for (const FlowTablePoint& point : rating.Points) {
        file << DoubleToText(point.Level) << '\t' << DoubleToText(point.Flow) << EndOfLine;
    }
}

/// What follows the word if the line begins with it.
std::optional<std::string_view> Behind(std::string_view line, std::string_view word) {
    return line.substr(0, word.size()) == word ? std::optional(Trim(line.substr(word.size())))
                                               : std::nullopt;
}

/// The text before " - ", which says the same in words.
std::string_view Plain(std::string_view text) {
    return Trim(text.substr(0, text.find(" - ")));
}

void TakeCode(std::string_view text, int count, int& code) {
    const std::optional<double> number = WholeNumber(Plain(text));
    for (int i = 0; i < count; ++i) {
        code = number && *number == i ? i : code;
    }
}

void TakeField(std::string_view text, RatingDevice& device) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        return;
    }
    const std::optional<std::size_t> field =
        RatingFieldAt(*device.Kind, Trim(text.substr(0, equals)));
    const std::optional<double> value = WholeNumber(Plain(text.substr(equals + 1)));
    if (field && value) {
        device.Values[*field] = *value;
    }
}

void TakeRow(std::string_view text, RatingDevice& device) {
    RatingRow row{};
    std::size_t count = 0;
    for (const std::string_view piece : SplitAtBlanks(text)) {
        const std::optional<double> figure = WholeNumber(piece);
        if (!figure || count == device.Kind->Columns.size()) {
            return;
        }
        row[count++] = *figure;
    }
    if (count == device.Kind->Columns.size() && device.Rows.size() < MostRatingRows) {
        device.Rows.push_back(row);
    }
}

/// Takes one heading into the device: its unit of length and its kind have to come first.
void TakeHeading(std::string_view line, RatingDevice& device) {
    if (const auto length = Behind(line, LengthWord)) {
        TakeCode(*length, LengthUnits, device.LengthUnit);
    }
    if (const auto kind = Behind(line, KindWord); kind && device.Kind == nullptr) {
        if (const RatingKind* found = FindRatingKind(Plain(*kind))) {
            device = DefaultRatingDevice(*found, device.LengthUnit);
        }
    }
    if (device.Kind == nullptr) {
        return;
    }
    if (const auto name = Behind(line, NameWord)) {
        device.Name = *name;
    } else if (const auto flow = Behind(line, FlowWord)) {
        TakeCode(*flow, FlowUnits, device.FlowUnit);
    } else if (const auto field = Behind(line, FieldWord)) {
        TakeField(*field, device);
    } else if (const auto row = Behind(line, RowWord)) {
        TakeRow(*row, device);
    }
}

/// A table made elsewhere as own points.
std::optional<RatingTableRead> OwnPoints(const std::string& text) {
    std::istringstream stream(text);
    FlowTable table;
    const RatingKind* kind = FindRatingKind("points");
    if (kind == nullptr || !config::ReadFlowTable(stream, text.size(), table) ||
        table.UpperBound() == 0) {
        return std::nullopt;
    }
    RatingTableRead read;
    read.Device = DefaultRatingDevice(*kind, 0);
    for (const FlowTablePoint& point : table) {
        if (read.Device.Rows.size() < MostRatingRows) {
            read.Device.Rows.push_back({point.Level, point.Flow, 0});
        }
    }
    return read;
}

}  // namespace

void WriteRatingTable(std::ostream& file, const RatingDevice& device, const Rating& rating) {
    file << Title << EndOfLine;
    WriteDevice(file, device);
    WriteRating(file, device, rating);
}

std::string RatingTableText(const RatingDevice& device, const Rating& rating) {
    std::ostringstream text;
    WriteRatingTable(text, device, rating);
    return text.str();
}

std::optional<RatingTableRead> ReadRatingTable(std::istream& file, std::uintmax_t limit) {
    std::string text;
    RatingDevice device;
    LineReader lines(file, limit);
    std::string_view line;
    while (lines.Next(line)) {
        TakeHeading(line, device);
        text.append(line).append(LineBreak);
    }
    if (!lines.Intact()) {
        return std::nullopt;
    }
    if (device.Kind != nullptr) {
        return RatingTableRead{std::move(device), true};
    }
    return OwnPoints(text);
}

std::optional<RatingTableRead> OpenRatingTable(std::string_view path) {
    TextFile file;
    if (path.empty() || !OpenTextFile(path, LargestTableFile, file)) {
        return std::nullopt;
    }
    return ReadRatingTable(file.Stream, file.Size);
}
