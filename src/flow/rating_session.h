#ifndef ORVIA_FLOW_RATING_SESSION_H
#define ORVIA_FLOW_RATING_SESSION_H

#include <map>
#include <string>
#include <string_view>

#include "flow/rating_entry.h"
#include "platform/host.h"

/// What the window of ratings works on: the device that is being typed, its rating, the file that
/// it was read from or saved to, and what is asked about changes.
class RatingSession {
 public:
    /// Begins with the first kind of device; `outside` outlives the session.
    explicit RatingSession(const Host& outside);

    [[nodiscard]] const RatingEntry& Entry() const { return entry_; }
    [[nodiscard]] const RatingDevice& Device() const { return entry_.Device(); }

    /// Turns to another kind; the figures typed for the one before are there when it comes back.
    void ChooseKind(const RatingKind& kind);
    void ChooseLengthUnit(int unit);
    void ChooseFlowUnit(int unit);
    void SetName(std::string_view name);
    void SetFieldText(std::size_t field, std::string_view text);
    void SetRowsText(std::string_view text);

    /// The rating of what is typed, worked out when something has changed since the last call.
    [[nodiscard]] const Rating& Made();

    /// Why a field is to be looked at: its text is not accepted, or the rating has a remark on it.
    [[nodiscard]] std::string FieldMark(std::size_t field) const;

    /// Whether anything was typed that no file holds.
    [[nodiscard]] bool Changed() const;
    /// Title with the name of the file that was read or saved last, that of a new table if there is
    /// none.
    [[nodiscard]] std::string Title() const;

    /// "Save as Table File". False when cancelled, or when there is no table or it could not be
    /// written, which is told.
    [[nodiscard]] bool Save();
    /// "Open...": offers to save changes, asks for a file, takes its device. False when cancelled,
    /// or when it is no table, which is told.
    [[nodiscard]] bool Open();
    /// Text of the rows of a file that the operator picks; empty when cancelled, or when it has no
    /// row, which is told. The rows stay as they are.
    [[nodiscard]] std::string PickRows();
    /// Whether nothing is lost by closing: asks about changes. False while it asks already.
    [[nodiscard]] bool MayClose();
    /// From the end of the program on nothing is asked or told, and every question counts as
    /// cancelled.
    void Silence() { silent_ = true; }

 private:
    [[nodiscard]] bool KeepsChanges();
    [[nodiscard]] bool Write(const std::string& path);
    void Take(RatingDevice device, const std::string& path);
    void Tell(BoxIcon icon, std::string_view title, const std::string& text) const;

    const Host& outside_;
    RatingEntry entry_;
    RatingEntry saved_;  ///< what nothing is lost of
    std::map<const RatingKind*, RatingEntry> others_;
    Rating made_;
    bool stale_ = true;
    std::string path_;
    bool silent_ = false;
    bool asks_ = false;
};

/// The name that a file is offered under: the device's own words as far as they can stand in a
/// name, else its kind's.
[[nodiscard]] std::string SuggestedTableName(const RatingDevice& device);

#endif  // ORVIA_FLOW_RATING_SESSION_H
