// A walk over the forms that looks for what an eye, a keyboard or a screen reader stumbles over.
#include <QDialog>
#include <QLineEdit>
#include <QScreen>
#include <QTabBar>
#include <QTemporaryDir>
#include <map>
#include <set>

#include "app/frmMain_fixture.h"
#include "app/frmSplash.h"
#include "archive/frmArchive.h"
#include "archive/frmPlot.h"
#include "history/frmProgress.h"
#include "platform/qt/sql_archive.h"
#include "platform/qt/text_qt.h"
#include "support/fake_shared_archive.h"
#include "support/qt/desk_look.h"
#include "support/qt/form_look.h"

namespace testing_support {
namespace {

struct DeskCase {
    const char* Name;
    bool Dark;
    int Points;
};

/// Palette and font of the desktop, there before any window is made.
class Desk : public ::testing::WithParamInterface<DeskCase> {
 protected:
    Desk() : font_(QApplication::font()) {
        QFont font = font_;
        font.setPointSize(GetParam().Points > 0 ? GetParam().Points : font.pointSize());
        QApplication::setFont(font);
    }
    ~Desk() override { QApplication::setFont(font_); }

 private:
    const DeskColours colours_{GetParam().Dark};
    const QFont font_;
};

constexpr int SmallestScreen = 1024;

/// What looks like a fault and is meant so.
const std::set<std::string> Meant{
    // The viewer's own buttons keep their order; the plot's came later, and stands apart.
    "frmHistory: tab goes back: cmdOptions to cmdPlot"};

/// An archive, there before the console.
struct ArchiveOfTest {
    FakeSharedArchive Shared;
    QTemporaryDir Folder;
    SqlArchive Archive{{.File = Folder.filePath(QStringLiteral("archive.sqlite"))}};
};

class AllForms : public Desk, private ArchiveOfTest, public MainWindowTest {
 protected:
    AllForms() : MainWindowTest(&Archive, &Shared) {
        simulator::LoggerSetup site = BasicSite(4, 3, 2);
        site.HistoryRecords = 60;
        site.Settings.Analog[0].Units = "Feet";
        site.Settings.Flow.Mode = simulator::FlowMode::Manning;
        host_.Virtual.Network.AddLogger(site);
        const std::string path = host_.Virtual.Store.Values["Configuration/AddressBook"];
        WriteFile(path,
                  "\"Hill Tanks\", 10, 00A096000001\r\n\"Weir & Pond\", 10, 00A096000004\r\n");
        QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { Watch(); });
        watch_.start(2);
    }
    ~AllForms() override { watch_.stop(); }

    /// Looks at a form as it stands, and keeps a picture of it.
    void Look(QWidget& form, const std::string& page = {}) {
        QCoreApplication::processEvents();
        const std::string name = FromQt(form.objectName());
        looked_.insert(name);
        LookForSize(form, name + " " + page);
        for (const std::string& fault : FaultsOf(form)) {
            if (Meant.count(name + ": " + fault) == 0) {
                ADD_FAILURE() << name << " " << page << ": " << fault;
            }
        }
        const QString words =
            QStringLiteral("%1 %2 %3")
                .arg(form.objectName(), ToQt(page), QLatin1String(GetParam().Name));
        KeepPicture(form, words.simplified().replace(u' ', u'-'));
    }

    /// Looks at each of its pages, if it has some.
    void LookAtPages(QDialog& dialog) {
        auto* tabs = dialog.findChild<QTabBar*>();
        for (int page = tabs != nullptr ? tabs->count() - 1 : 0; page >= 0; --page) {
            if (tabs != nullptr) {
                tabs->setCurrentIndex(page);
            }
            Look(dialog, tabs != nullptr ? FromQt(tabs->tabText(page)) : std::string());
        }
    }

    void Trigger(const char* name) { Find<QAction>(name).trigger(); }

    std::set<std::string> looked_;

 private:
    /// The main window begins with its own size, whatever the screen; letters of twice the size
    /// want more than a small one.
    static void LookForSize(const QWidget& form, const std::string& name) {
        const QSize room = form.screen()->availableSize();
        const bool free =
            name.rfind("frmMain", 0) == 0 || GetParam().Points > 0 || room.width() < SmallestScreen;
        if (form.isWindow() && !free && form.size().boundedTo(room) != form.size()) {
            ADD_FAILURE() << name << ": " << form.width() << " x " << form.height()
                          << " on a screen of " << room.width() << " x " << room.height();
        }
    }

    void Watch() {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        if (dialog == nullptr || !dialog->isVisible() || dialog == last_) {
            last_ = dialog;
            return;
        }
        const std::string name = FromQt(dialog->objectName());
        auto* okay = dialog->findChild<QPushButton*>(QStringLiteral("cmdOkay"));
        if (okay != nullptr && !okay->isEnabled()) {
            return;
        }
        last_ = dialog;
        const int visit = ++visits_[name];
        // Behind the watch's own turn: what is pressed may run until a further dialog is left.
        QMetaObject::invokeMethod(
            dialog, [this, dialog, name, visit] { Handle(*dialog, name, visit); },
            Qt::QueuedConnection);
    }

    void Handle(QDialog& dialog, const std::string& name, int visit) {
        static const std::map<std::string, std::vector<const char*>> Presses{
            {"frmConnect", {"cmdSetup", "cmdConnect"}},
            {"frmSetup", {"cmdCalibrate(0)", "cmdCancel"}},
            {"frmGetHistoryData", {"cmdOkay"}},
            {"frmAddClient1", {"cmdNext"}},
            {"frmHistory", {"cmdOptions", "cmdOK"}}};
        if (visit == 1) {
            LookAtPages(dialog);
        }
        if (name == "frmAddClient1") {
            dialog.findChild<QLineEdit*>(QStringLiteral("txtClientRadioName"))
                ->setText(QStringLiteral("Pond"));
        }
        if (name == "frmSelectClient") {
            QTest::keyClick(dialog.findChild<QWidget*>(QStringLiteral("lstClients")),
                            Qt::Key_Return);
            return;
        }
        const auto presses = Presses.find(name);
        if (presses == Presses.end() || visit > static_cast<int>(presses->second.size())) {
            dialog.reject();
            return;
        }
        const char* press = presses->second[static_cast<std::size_t>(visit - 1)];
        auto* button = dialog.findChild<QPushButton*>(QLatin1String(press));
        if (button == nullptr) {
            ADD_FAILURE() << "no " << press << " in " << name;
            dialog.reject();
            return;
        }
        button->click();
    }

    QTimer watch_;
    const QDialog* last_ = nullptr;
    std::map<std::string, int> visits_;
};

TEST_P(AllForms, HaveNothingToStumbleOver) {
    Start([](frmConnect&) {});
    ASSERT_EQ(state_.LinkRecord.Connected, True);
    ClickClient(2);
    Click("cmdGetSettings");
    for (const char* view : {"cmdSmall", "cmdMedium", "cmdWide", "cmdMeter", "cmdFlow"}) {
        WindowOf(2)->findChild<QPushButton*>(QLatin1String(view))->click();
        Look(*window_, view);
    }
    Trigger("mnuLivePlot");
    Look(Find<frmPlot>("frmPlot"), "of a window");
    for (const char* row : {"mnuAbout", "mnuAddClient2", "mnuEditClient2"}) {
        Trigger(row);
    }
    for (const char* button : {"cmdSignalLevel", "cmdGetHistory", "cmdSetup"}) {
        Click(button);
    }
    Trigger("mnuGetSettingsFACW");
    Look(*window_, "with the log");
    Trigger("mnuNewFlowTable");
    Look(Find<QWidget>("frmRating"));
    Trigger("mnuTrace");
    Look(Find<QWidget>("frmTrace"));
    Trigger("mnuSupport");
    LookAtPages(Find<QDialog>("frmSupport"));
    Trigger("mnuCollect");
    Look(*window_, "with the log of a collection");
    Trigger("mnuCollectRegularly");
    LookAtPages(Find<QDialog>("frmCollect"));
    Trigger("mnuArchiveSettings");
    Look(Find<QDialog>("frmArchiveSettings"));
    Trigger("mnuArchive");
    auto& archive = Find<frmArchive>("frmArchive");
    Look(archive);
    for (const char* button : {"cmdPlot", "cmdReport"}) {
        archive.findChild<QPushButton*>(QLatin1String(button))->click();
    }
    Look(*window_->findChildren<frmPlot*>().last(), "of the archive");
    Look(Find<QDialog>("frmReport"));
    frmProgress progress(nullptr);
    frmSplash splash;
    for (QWidget* form : {static_cast<QWidget*>(&progress), static_cast<QWidget*>(&splash)}) {
        form->show();
        Look(*form);
    }
    window_->resize(1024, 560);
    Look(*window_, "on a small screen");
    for (const char* form :
         {"frmMain",           "frmConnect",     "frmConnectSetup",   "frmAbout",
          "frmAddClient1",     "frmAddClient2",  "frmArchive",        "frmPlot",
          "frmReport",         "frmProgress",    "frmSplash",         "frmSelectClient",
          "frmEditClient",     "frmSignalLevel", "frmGetHistoryData", "frmHistory",
          "frmHistoryOptions", "frmSetup",       "frmCalibrate",      "frmRating",
          "frmTrace",          "frmSupport",     "frmCollect",        "frmArchiveSettings"}) {
        EXPECT_EQ(looked_.count(form), 1U) << form << " was not looked at";
    }
}

INSTANTIATE_TEST_SUITE_P(Desks, AllForms,
                         ::testing::Values(DeskCase{"Light", false, 0}, DeskCase{"Dark", true, 0},
                                           DeskCase{"LightLarge", false, 18},
                                           DeskCase{"DarkLarge", true, 18}),
                         [](const auto& desk) { return desk.param.Name; });

}  // namespace
}  // namespace testing_support
