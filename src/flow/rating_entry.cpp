#include "flow/rating_entry.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "common/line_reader.h"
#include "common/number_text.h"
#include "common/text.h"

namespace {

std::string Counted(int count, std::string_view one, std::string_view many) {
    return IntegerToText(count) + " " + std::string(count == 1 ? one : many);
}

}  // namespace

RatingEntry::RatingEntry(const RatingKind& kind, int lengthUnit, int flowUnit)
    : RatingEntry([&] {
          RatingDevice device = DefaultRatingDevice(kind, lengthUnit);
          device.FlowUnit = flowUnit;
          return device;
      }()) {}

RatingEntry::RatingEntry(RatingDevice device) : device_(std::move(device)) {
    texts_.resize(device_.Values.size());
    unread_.assign(device_.Values.size(), false);
    ShowFields();
    rowsText_ = RatingRowsText(device_);
    rowsRead_.Taken = static_cast<int>(device_.Rows.size());
}

void RatingEntry::ShowFields() {
    for (std::size_t i = 0; i < texts_.size(); ++i) {
        if (!unread_[i]) {
            texts_[i] = RatingFieldText(device_, i);
        }
    }
}

void RatingEntry::SetFieldText(std::size_t field, std::string_view text) {
    texts_[field] = text;
    unread_[field] = !SetRatingFieldText(device_, field, text);
}

std::string RatingEntry::FieldFault(std::size_t field) const {
    if (!unread_[field]) {
        return RatingFieldFault(device_, field);
    }
    const std::string caption(Kind().Fields[field].Caption);
    const std::string_view text = Trim(texts_[field]);
    return text.empty() ? caption + " is missing."
                        : caption + ": \"" + std::string(text) + "\" is not a number.";
}

std::string RatingEntry::FieldHelp(std::size_t field) const {
    const RatingField& told = Kind().Fields[field];
    std::string help(told.Hint);
    if (told.Units == RatingUnits::Choice) {
        return help;
    }
    return help + (help.empty() ? "" : " ") + RatingFieldLimits(device_, field) +
           (told.Optional ? ", or empty." : ".");
}

std::string RatingEntry::RowsCaption() const {
    std::string caption;
    for (const RatingColumn& column : Kind().Columns) {
        const std::string unit = RatingUnitText(device_, column.Units);
        caption += (caption.empty() ? "" : ", ") + std::string(column.Caption) +
                   (unit.empty() ? "" : " in " + unit);
    }
    return caption;
}

void RatingEntry::SetRowsText(std::string_view text) {
    rowsText_ = text;
    rowsRead_ = SetRatingRowsText(device_, text);
}

std::string RatingEntry::RowsReport() const {
    std::string report = Counted(rowsRead_.Taken, "row", "rows");
    if (rowsRead_.PassedOver > 0) {
        report +=
            "; " +
            Counted(rowsRead_.PassedOver, "line is no row and is", "lines are no rows and are") +
            " passed over";
    }
    if (rowsRead_.Beyond > 0) {
        report += "; " + Counted(rowsRead_.Beyond, "row is", "rows are") + " beyond the " +
                  IntegerToText(static_cast<int>(MostRatingRows)) + " that are taken";
    }
    return report + ".";
}

template <typename Turn>
void RatingEntry::Change(Turn turn) {
    std::istringstream stream(rowsText_);
    LineReader lines(stream);
    std::string changed;
    std::string_view line;
    RatingDevice one = device_;
    while (lines.Next(line)) {
        if (SetRatingRowsText(one, line).Taken == 1) {
            RatingDevice turned = one;
            turn(turned);
            changed += RatingRowsText(turned);
        } else {
            changed.append(line).append(LineBreak);
        }
    }
    turn(device_);
    SetRowsText(changed);
    ShowFields();
}

void RatingEntry::ChangeLengthUnit(int unit) {
    if (unit == device_.LengthUnit) {
        return;
    }
    Change([unit](RatingDevice& device) { ChangeRatingLengthUnit(device, unit); });
}

void RatingEntry::ChangeFlowUnit(int unit) {
    if (unit == device_.FlowUnit) {
        return;
    }
    Change([unit](RatingDevice& device) { ChangeRatingFlowUnit(device, unit); });
}

Rating RatingEntry::MadeRating() const {
    if (std::find(unread_.begin(), unread_.end(), true) == unread_.end()) {
        return ComputeRating(device_);
    }
    Rating refused;
    for (std::size_t i = 0; i < texts_.size(); ++i) {
        if (const std::string fault = FieldFault(i); !fault.empty()) {
            refused.Remarks.push_back({RatingWeight::Refused, fault, static_cast<int>(i)});
        }
    }
    return refused;
}

bool RatingEntry::Equals(const RatingEntry& other) const {
    return device_.Kind == other.device_.Kind && device_.LengthUnit == other.device_.LengthUnit &&
           device_.FlowUnit == other.device_.FlowUnit && device_.Name == other.device_.Name &&
           texts_ == other.texts_ && rowsText_ == other.rowsText_;
}
