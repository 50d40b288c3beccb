#include "flow/rating_session.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <utility>

#include "common/line_reader.h"
#include "common/path_text.h"
#include "common/text.h"
#include "flow/flow_table.h"
#include "flow/rating_file.h"

namespace {

constexpr std::string_view Extension = ".tbl";
constexpr std::string_view TableFilter = "Flow Table File (*.tbl)|*.tbl";
constexpr std::string_view SaveTitle = "Save as Table File";
constexpr std::string_view OpenTitle = "Open Flow Table";
constexpr std::string_view RowsTitle = "Rows from File";
constexpr std::uintmax_t LargestRowsFile = std::uintmax_t{8} * 1024 * 1024;

/// Whether a byte may stand in a file's name on every system; those of other scripts may.
bool StandsInName(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte > '~' ||
           (byte >= ' ' && std::string_view("\"*/:<>?\\|").find(c) == std::string_view::npos &&
            byte != 127);
}

std::string FirstReason(const Rating& rating) {
    return rating.Remarks.empty() ? std::string() : rating.Remarks.front().Text;
}

}  // namespace

std::string SuggestedTableName(const RatingDevice& device) {
    std::string name;
    std::copy_if(device.Name.begin(), device.Name.end(), std::back_inserter(name), StandsInName);
    name = Trim(name);
    while (!name.empty() && name.back() == '.') {
        name.pop_back();
    }
    return (name.empty() ? std::string(device.Kind->Key) : name) + std::string(Extension);
}

RatingSession::RatingSession(const Host& outside)
    : outside_(outside), entry_(RatingKinds().front()), saved_(entry_) {}

// ----- typing

void RatingSession::ChooseKind(const RatingKind& kind) {
    if (&kind == &entry_.Kind()) {
        return;
    }
    // To look at a kind of device before anything is typed is no change.
    const bool untouched = !Changed() && path_.empty();
    const int lengthUnit = Device().LengthUnit;
    const int flowUnit = Device().FlowUnit;
    const std::string name = Device().Name;
    others_.insert_or_assign(&entry_.Kind(), entry_);
    const auto before = others_.find(&kind);
    entry_ = before != others_.end() ? before->second : RatingEntry(kind, lengthUnit, flowUnit);
    entry_.ChangeLengthUnit(lengthUnit);
    entry_.ChangeFlowUnit(flowUnit);
    entry_.SetName(name);
    if (untouched) {
        saved_ = entry_;
    }
    stale_ = true;
}

void RatingSession::ChooseLengthUnit(int unit) {
    entry_.ChangeLengthUnit(unit);
    stale_ = true;
}

void RatingSession::ChooseFlowUnit(int unit) {
    entry_.ChangeFlowUnit(unit);
    stale_ = true;
}

void RatingSession::SetName(std::string_view name) {
    entry_.SetName(name);
}

void RatingSession::SetFieldText(std::size_t field, std::string_view text) {
    entry_.SetFieldText(field, text);
    stale_ = true;
}

void RatingSession::SetRowsText(std::string_view text) {
    entry_.SetRowsText(text);
    stale_ = true;
}

const Rating& RatingSession::Made() {
    if (stale_) {
        made_ = entry_.MadeRating();
        stale_ = false;
    }
    return made_;
}

std::string RatingSession::FieldMark(std::size_t field) const {
    std::string fault = entry_.FieldFault(field);
    if (!fault.empty() || stale_) {
        return fault;
    }
    const auto remark =
        std::find_if(made_.Remarks.begin(), made_.Remarks.end(), [field](const RatingRemark& each) {
            return each.Weight != RatingWeight::Note && each.Field == static_cast<int>(field);
        });
    return remark == made_.Remarks.end() ? fault : remark->Text;
}

bool RatingSession::Changed() const {
    return !entry_.Equals(saved_);
}

std::string RatingSession::Title() const {
    return path_.empty() ? std::string("New Flow Table")
                         : "Flow Table - " + std::string(BehindLastSeparator(path_));
}

// ----- files

void RatingSession::Tell(BoxIcon icon, std::string_view title, const std::string& text) const {
    if (!silent_) {
        outside_.Boxes.Show({.Text = text, .Title = std::string(title), .Icon = icon});
    }
}

bool RatingSession::Write(const std::string& path) {
    if (!TakesFile(path)) {
        return false;
    }
    std::ofstream file(std::filesystem::path(NativePath(path)), std::ios::binary);
    WriteRatingTable(file, Device(), Made());
    file.close();
    return !file.fail();
}

bool RatingSession::Save() {
    if (!Made().Made()) {
        Tell(BoxIcon::Exclamation, SaveTitle,
             "There is no table to save.\n\n" + FirstReason(Made()));
        return false;
    }
    const std::string offered =
        path_.empty() ? JoinPath(outside_.StartFolder(), SuggestedTableName(Device())) : path_;
    const auto path = outside_.Dialogs.PickForSaving({.Title = std::string(SaveTitle),
                                                      .DefaultExtension = std::string(Extension),
                                                      .Filter = std::string(TableFilter),
                                                      .InitialName = offered},
                                                     true);
    if (!path || silent_) {
        return false;
    }
    if (!Write(*path)) {
        Tell(BoxIcon::Stop, SaveTitle,
             "Error: the table was not saved. The file could not be written:\n" + *path);
        return false;
    }
    path_ = *path;
    saved_ = entry_;
    return true;
}

void RatingSession::Take(RatingDevice device, const std::string& path) {
    entry_ = RatingEntry(std::move(device));
    saved_ = entry_;
    others_.clear();
    path_ = path;
    stale_ = true;
}

bool RatingSession::Open() {
    if (!KeepsChanges()) {
        return false;
    }
    const auto path = outside_.Dialogs.PickExisting(
        {.Title = std::string(OpenTitle),
         .DefaultExtension = std::string(Extension),
         .Filter = std::string(TableFilter),
         .InitialName = path_.empty() ? JoinPath(outside_.StartFolder(), "*.tbl") : path_});
    if (!path || silent_) {
        return false;
    }
    std::optional<RatingTableRead> read = OpenRatingTable(*path);
    if (!read) {
        Tell(BoxIcon::Stop, OpenTitle,
             "Error: selected file does not appear to be a valid flow table file.");
        return false;
    }
    const bool fromHeadings = read->FromHeadings;
    Take(std::move(read->Device), *path);
    if (!fromHeadings) {
        Tell(BoxIcon::Information, OpenTitle,
             "The file does not tell what device it was made from.\n"
             "Its points were taken as own points, in feet and CFS.");
    }
    return true;
}

std::string RatingSession::PickRows() {
    const auto path = outside_.Dialogs.PickExisting(
        {.Title = std::string(RowsTitle),
         .DefaultExtension = ".csv",
         .Filter = "Comma-Separated Values (*.csv)|*.csv|Text Files (*.txt)|*.txt|All Files (*)|*",
         .InitialName = JoinPath(outside_.StartFolder(), "*.csv")});
    if (!path || silent_) {
        return {};
    }
    TextFile file;
    std::string text;
    if (OpenTextFile(*path, LargestRowsFile, file)) {
        text.assign(std::istreambuf_iterator<char>(file.Stream), {});
    }
    RatingEntry tried = entry_;
    tried.SetRowsText(text);
    if (tried.Device().Rows.empty()) {
        Tell(BoxIcon::Stop, RowsTitle,
             "Error: no row of figures could be read from the file:\n" + *path);
        return {};
    }
    return text;
}

bool RatingSession::KeepsChanges() {
    if (!Changed()) {
        return true;
    }
    if (silent_ || asks_) {
        return false;
    }
    asks_ = true;
    const BoxAnswer answer =
        outside_.Boxes.Show({.Text = "The flow table has changed without being saved to a file.\n"
                                     "Do you want to save it now?",
                             .Title = "Data Has Changed",
                             .Icon = BoxIcon::Information,
                             .Buttons = BoxButtons::YesNoCancel});
    const bool kept = answer == BoxAnswer::No || (answer == BoxAnswer::Yes && Save());
    asks_ = false;
    return kept;
}

bool RatingSession::MayClose() {
    return KeepsChanges();
}
