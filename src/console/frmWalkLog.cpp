#include "console/frmWalkLog.h"

#include <QMdiArea>

#include "console/log_place.h"
#include "platform/qt/twips.h"

namespace {

TwipsPair SizeOf(const QWidget& widget) {
    return {TwipsOfPixels(widget.width()), TwipsOfPixels(widget.height())};
}

}  // namespace

void WalkLogForm::AppendLog(const std::string& text) {
    if (LogWindowOpen()) {
        form_->AppendText(text);
    }
}

void WalkLogForm::OpenLog() {
    if (!LogWindowOpen()) {
        Load();
    }
    form_->showNormal();
    form_->Reset();
    area_.setActiveSubWindow(form_);
    form_->widget()->setFocus();
}

bool WalkLogForm::LogWindowOpen() const {
    return !form_.isNull() && form_->IsLoaded();
}

bool WalkLogForm::CancelRequested() const {
    return LogWindowOpen() && form_->CancelRequested;
}

void WalkLogForm::SetFoot(const std::string& text) {
    if (LogWindowOpen()) {
        form_->SetFoot(text);
    }
}

void WalkLogForm::EndLog() {
    if (LogWindowOpen()) {
        form_->EndWalk();
    }
}

void WalkLogForm::Unload() {
    if (LogWindowOpen()) {
        form_->Unload();
    }
}

std::string WalkLogForm::Text() const {
    return LogWindowOpen() ? form_->Text() : std::string();
}

void WalkLogForm::Load() {
    form_ = new frmLog;
    area_.addSubWindow(form_);
    const TwipsPair place = PlaceOfLog(SizeOf(main_).Across, SizeOf(panel_), SizeOf(*form_));
    form_->move(PixelsOfTwips(place.Across), PixelsOfTwips(place.Down));
}
