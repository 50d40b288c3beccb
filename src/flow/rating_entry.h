#ifndef ORVIA_FLOW_RATING_ENTRY_H
#define ORVIA_FLOW_RATING_ENTRY_H

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "flow/rating_device.h"
#include "flow/rating_made.h"

/// A device as it is being typed: the texts stand as they were entered, and the device holds what
/// of them can be read. Nothing typed is ever dropped.
class RatingEntry {
 public:
    /// The kind's defaults.
    explicit RatingEntry(const RatingKind& kind, int lengthUnit = 0, int flowUnit = 0);
    /// A device as it was read.
    explicit RatingEntry(RatingDevice device);

    [[nodiscard]] const RatingDevice& Device() const { return device_; }
    [[nodiscard]] const RatingKind& Kind() const { return *device_.Kind; }

    [[nodiscard]] const std::string& FieldText(std::size_t field) const { return texts_[field]; }
    void SetFieldText(std::size_t field, std::string_view text);
    /// Why a field's text is not accepted, in words; empty if it is.
    [[nodiscard]] std::string FieldFault(std::size_t field) const;
    /// What a field is and what it may be, in one or two sentences.
    [[nodiscard]] std::string FieldHelp(std::size_t field) const;

    /// What the rows' columns are: "Level in feet, Flow in CFS"; empty for a kind without rows.
    [[nodiscard]] std::string RowsCaption() const;
    [[nodiscard]] const std::string& RowsText() const { return rowsText_; }
    void SetRowsText(std::string_view text);
    /// What was read of the rows: how many, and how many lines are none.
    [[nodiscard]] std::string RowsReport() const;

    void SetName(std::string_view name) { device_.Name = name; }

    /// Turns what can be read into other units and leaves the other texts as they are.
    void ChangeLengthUnit(int unit);
    void ChangeFlowUnit(int unit);

    /// The rating; refused, with a remark for each, while a field's text cannot be read.
    [[nodiscard]] Rating MadeRating() const;

    /// Whether the same was typed.
    [[nodiscard]] bool Equals(const RatingEntry& other) const;

 private:
    void ShowFields();
    template <typename Turn>
    void Change(Turn turn);

    RatingDevice device_;
    std::vector<std::string> texts_;
    std::vector<bool> unread_;  ///< a field whose text is no figure
    std::string rowsText_;
    RatingRowsRead rowsRead_;
};

#endif  // ORVIA_FLOW_RATING_ENTRY_H
