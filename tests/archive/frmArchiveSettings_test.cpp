#include "archive/frmArchiveSettings.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <map>
#include <memory>

#include "platform/qt/text_qt.h"
#include "support/fake_shared_archive.h"
#include "support/qt/desk_look.h"
#include "support/qt/find_control.h"
#include "support/qt/run_events.h"
#include "support/virtual_host.h"

namespace testing_support {
namespace {

/// The real window on a host of fakes.
class ArchiveSettingsTest : public ::testing::Test {
 protected:
    ArchiveSettingsTest() {
        outside_.TickMilliseconds = 2;
        outside_.Shared = &shared_;
        outside_.Passwords = &keeper_;
        // It is only looked whether there is one.
        outside_.Archive = reinterpret_cast<ArchiveStore*>(this);
    }

    void Open() {
        form_ = std::make_unique<frmArchiveSettings>(
            ArchiveSettingsWork{.sharing = sharing_, .outside = outside_}, nullptr);
        form_->ShowOrRaise();
        ASSERT_TRUE(QTest::qWaitForWindowActive(form_.get()));
    }
    /// Opens it as one who has shared before.
    void OpenShared() {
        KeepSharing({.On = true,
                     .Place = {.Server = "db", .Port = 5433, .Database = "orvia", .User = "crew"}},
                    host_.Store);
        keeper_.Passwords["crew@db:5433/orvia"] = "secret";
        sharing_.Begin();
        keeper_.Answer();
        shared_.Now = {.State = SharingState::Done, .Waiting = 0};
        Open();
    }
    template <typename Widget = QWidget>
    Widget& Control(const char* name) {
        return *Find<Widget>(*form_, name);
    }
    void Type(const char* name, const char* text) {
        Control<QLineEdit>(name).setText(QString::fromUtf8(text));
    }
    void Fill() {
        Control<QCheckBox>("chkShare").setChecked(true);
        Type("txtServer", "db.example.org");
        Type("txtPort", "5432");
        Type("txtDatabase", "orvia");
        Type("txtUser", "crew");
    }
    void Press(const char* name) { Control<QPushButton>(name).click(); }
    [[nodiscard]] std::string Text(const char* name) {
        return FromQt(Control<QLabel>(name).text());
    }
    [[nodiscard]] bool Shows(const char* label, const std::string& text) {
        return RunEventsUntil([&, label] { return Text(label).find(text) != std::string::npos; });
    }
    const std::vector<BoxContent>& Boxes() const { return host_.Boxes.Shown; }

    VirtualHost host_;
    FakeSharedArchive shared_;
    FakeKeeper keeper_;
    Host outside_ = host_.AsHost("/nowhere");
    OperationStatus status_{host_.Clock};
    ArchiveSharing sharing_{outside_, status_};
    std::unique_ptr<frmArchiveSettings> form_;
};

TEST_F(ArchiveSettingsTest, OpensOffAndKeepsNothingByItself) {
    Open();
    EXPECT_FALSE(Control<QCheckBox>("chkShare").isChecked());
    EXPECT_FALSE(Control("txtServer").isEnabled());
    EXPECT_FALSE(Control("cmdTest").isEnabled());
    EXPECT_FALSE(Control("cmdAgain").isEnabled());
    EXPECT_EQ(Control<QLineEdit>("txtPort").text(), QStringLiteral("5432"));
    EXPECT_EQ(Text("lblHandOver"), "The archive is not shared.");
    Press("cmdOK");
    EXPECT_FALSE(form_->isVisible());
    EXPECT_TRUE(host_.Store.Values.empty());
    EXPECT_TRUE(shared_.Shared.empty());
}

TEST_F(ArchiveSettingsTest, SharesByWhatWasChosen) {
    Open();
    Fill();
    Control<QComboBox>("cmbTls").setCurrentIndex(2);
    Type("txtPassword", "secret");
    Press("cmdOK");
    EXPECT_TRUE(form_->isVisible()) << "the keyring has not answered";
    EXPECT_FALSE(Control("cmdOK").isEnabled());
    keeper_.Answer();
    EXPECT_FALSE(form_->isVisible());
    ASSERT_EQ(shared_.Shared.size(), 1U);
    EXPECT_EQ(shared_.Shared[0].Place, (ServerPlace{.Server = "db.example.org",
                                                    .Database = "orvia",
                                                    .User = "crew",
                                                    .Tls = ServerTls::Checked}));
    EXPECT_EQ(shared_.Shared[0].Password, "secret");
    EXPECT_EQ(keeper_.Passwords["crew@db.example.org:5432/orvia"], "secret");
    EXPECT_TRUE(ReadSharing(host_.Store).On);
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(ArchiveSettingsTest, ThePasswordIsInNoSetting) {
    Open();
    Fill();
    Type("txtPassword", "very secret");
    Press("cmdTest");
    Press("cmdOK");
    keeper_.Answer();
    ASSERT_FALSE(host_.Store.Values.empty());
    for (const auto& [key, value] : host_.Store.Values) {
        EXPECT_EQ(value.find("secret"), std::string::npos) << key;
    }
    EXPECT_EQ(Control<QLineEdit>("txtPassword").text(), QString());
    EXPECT_EQ(Control<QLineEdit>("txtPassword").echoMode(), QLineEdit::Password);
}

TEST_F(ArchiveSettingsTest, LeftToTheFileNoPasswordIsGivenOrKept) {
    Open();
    Fill();
    Type("txtPassword", "secret");
    Control<QComboBox>("cmbPassword").setCurrentIndex(1);
    EXPECT_FALSE(Control("txtPassword").isEnabled());
    Press("cmdOK");
    ASSERT_EQ(shared_.Shared.size(), 1U);
    EXPECT_EQ(shared_.Shared[0].Password, "");
    EXPECT_TRUE(keeper_.Passwords.empty());
    EXPECT_FALSE(ReadSharing(host_.Store).Keyring);
}

TEST_F(ArchiveSettingsTest, AKeyringThatRefusesIsToldWithWhatHelps) {
    keeper_.Trouble = "no daemon";
    Open();
    Fill();
    Type("txtPassword", "secret");
    Press("cmdOK");
    keeper_.Answer();
    EXPECT_TRUE(form_->isVisible());
    EXPECT_NE(Text("lblState").find("no daemon"), std::string::npos);
    EXPECT_NE(Text("lblState").find("pgpass"), std::string::npos);
    EXPECT_TRUE(shared_.Shared.empty());
    Control<QComboBox>("cmbPassword").setCurrentIndex(1);
    Press("cmdOK");
    EXPECT_FALSE(form_->isVisible());
    EXPECT_EQ(shared_.Shared.size(), 1U);
}

TEST_F(ArchiveSettingsTest, WithoutAKeyringThereIsTheFile) {
    keeper_.Missing = "built without";
    Open();
    Fill();
    EXPECT_FALSE(Control("cmbPassword").isEnabled());
    EXPECT_FALSE(Control("txtPassword").isEnabled());
    Press("cmdOK");
    EXPECT_FALSE(ReadSharing(host_.Store).Keyring);
}

TEST_F(ArchiveSettingsTest, WithoutTheDriverNothingIsShared) {
    shared_.Missing = "The driver for PostgreSQL is missing.";
    Open();
    EXPECT_FALSE(Control("chkShare").isEnabled());
    EXPECT_TRUE(Control("lblWhyNot").isVisible());
    EXPECT_EQ(Text("lblWhyNot"), "The driver for PostgreSQL is missing.");
}

struct BadField {
    const char* Name;
    const char* Field;
    const char* Typed;
};

class ArchiveSettingsFlaws : public ArchiveSettingsTest,
                             public ::testing::WithParamInterface<BadField> {};

TEST_P(ArchiveSettingsFlaws, AreToldAndNothingIsKeptOrTried) {
    Open();
    Fill();
    Type(GetParam().Field, GetParam().Typed);
    for (const char* button : {"cmdOK", "cmdTest"}) {
        Press(button);
        ASSERT_EQ(Boxes().size(), 1U);
        EXPECT_EQ(Boxes()[0].Title, "Archive Settings");
        EXPECT_EQ(Boxes()[0].Icon, BoxIcon::Exclamation);
        host_.Boxes.Shown.clear();
        EXPECT_EQ(QApplication::focusWidget(), &Control(GetParam().Field));
    }
    EXPECT_TRUE(form_->isVisible());
    EXPECT_TRUE(host_.Store.Values.empty());
    EXPECT_TRUE(shared_.Shared.empty());
    EXPECT_TRUE(shared_.Tries.empty());
    EXPECT_TRUE(keeper_.Questions.empty());
}

INSTANTIATE_TEST_SUITE_P(All, ArchiveSettingsFlaws,
                         ::testing::Values(BadField{"NoServer", "txtServer", ""},
                                           BadField{"Blanks", "txtServer", "  "},
                                           BadField{"BlankWithin", "txtServer", "a b"},
                                           BadField{"NoPort", "txtPort", ""},
                                           BadField{"PortTooLarge", "txtPort", "65536"},
                                           BadField{"PortOfWords", "txtPort", "five"},
                                           BadField{"NoDatabase", "txtDatabase", " "},
                                           BadField{"NoUser", "txtUser", ""}),
                         [](const auto& one) { return one.param.Name; });

TEST_F(ArchiveSettingsTest, CancelAndEscapeKeepNothing) {
    OpenShared();
    for (const bool escape : {false, true}) {
        form_->ShowOrRaise();
        Type("txtServer", "other");
        if (escape) {
            QTest::keyClick(form_.get(), Qt::Key_Escape);
        } else {
            Press("cmdCancel");
        }
        EXPECT_FALSE(form_->isVisible());
        EXPECT_EQ(ReadSharing(host_.Store).Place.Server, "db");
        form_->ShowOrRaise();
        EXPECT_EQ(Control<QLineEdit>("txtServer").text(), QStringLiteral("db"));
        form_->close();
    }
    EXPECT_EQ(shared_.Shared.size(), 1U);
}

TEST_F(ArchiveSettingsTest, WhatIsLeftAsItIsGoesOn) {
    OpenShared();
    Press("cmdOK");
    EXPECT_FALSE(form_->isVisible());
    EXPECT_EQ(shared_.Shared.size(), 1U) << "is not begun anew";
}

TEST_F(ArchiveSettingsTest, ThePasswordThatIsKeptNeedNotBeTyped) {
    OpenShared();
    EXPECT_EQ(Control<QLineEdit>("txtPassword").placeholderText(), QStringLiteral("as it is kept"));
    Control<QComboBox>("cmbTls").setCurrentIndex(1);
    Press("cmdTest");
    keeper_.Answer();
    ASSERT_EQ(shared_.Tries.size(), 1U);
    EXPECT_EQ(shared_.Tries[0].Password, "secret");
    Press("cmdOK");
    keeper_.Answer();
    ASSERT_EQ(shared_.Shared.size(), 2U);
    EXPECT_EQ(shared_.Shared[1].Password, "secret");
    EXPECT_EQ(shared_.Shared[1].Place.Tls, ServerTls::Demanded);
}

TEST_F(ArchiveSettingsTest, SwitchedOffItKeepsTheServerForLater) {
    OpenShared();
    Control<QCheckBox>("chkShare").setChecked(false);
    Type("txtPort", "nonsense");
    Press("cmdOK");
    EXPECT_FALSE(form_->isVisible());
    EXPECT_EQ(shared_.Ceased, 1);
    EXPECT_FALSE(ReadSharing(host_.Store).On);
    EXPECT_EQ(ReadSharing(host_.Store).Place.Server, "db");
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(ArchiveSettingsTest, ATestTellsWhatCameOfItAndKeepsNothing) {
    Open();
    Fill();
    Type("txtPassword", "secret");
    Press("cmdTest");
    EXPECT_FALSE(Control("cmdTest").isEnabled());
    ASSERT_EQ(shared_.Tries.size(), 1U);
    EXPECT_EQ(shared_.Tries[0].Password, "secret");
    shared_.Trial = {.Good = true, .MayFile = true, .Loggers = 12};
    EXPECT_TRUE(Shows("lblTest", "This works. The shared archive has 12 loggers."));
    EXPECT_TRUE(Control("cmdTest").isEnabled());
    Press("cmdTest");
    shared_.Trial = {.Good = true, .Loggers = 1};
    EXPECT_TRUE(Shows("lblTest", "this user may only read"));
    Press("cmdTest");
    shared_.Trial = {.Kind = ArchiveTrouble::Foreign, .Words = "no table about"};
    EXPECT_TRUE(Shows("lblTest", "there is no archive in that database"));
    EXPECT_TRUE(Shows("lblTest", "no table about"));
    EXPECT_TRUE(host_.Store.Values.empty());
    EXPECT_TRUE(Boxes().empty());
}

TEST_F(ArchiveSettingsTest, ClosingEndsATest) {
    Open();
    Fill();
    Press("cmdTest");
    const int before = shared_.Forgotten;
    form_->close();
    keeper_.Answer();
    EXPECT_EQ(shared_.Forgotten, before + 1);
    EXPECT_TRUE(shared_.Tries.empty()) << "the keyring answered too late";
    form_->ShowOrRaise();
    EXPECT_EQ(Text("lblTest"), "");
    EXPECT_TRUE(Control<QCheckBox>("chkShare").isEnabled());
}

TEST_F(ArchiveSettingsTest, TheWindowMayGoBeforeTheKeyringAnswers) {
    Open();
    Fill();
    Type("txtPassword", "secret");
    Press("cmdOK");
    form_.reset();
    keeper_.Answer();
    EXPECT_TRUE(shared_.Shared.empty());
}

TEST_F(ArchiveSettingsTest, ShowsHowTheHandOverStands) {
    OpenShared();
    EXPECT_TRUE(Shows("lblHandOver", "All uploads are handed over."));
    shared_.Now = {.State = SharingState::Waits, .Waiting = 3};
    EXPECT_TRUE(Shows("lblHandOver", "3 uploads wait and are being handed over"));
    shared_.Now = {.State = SharingState::Away,
                   .Waiting = 4,
                   .Kind = ArchiveTrouble::Away,
                   .Words = "no route to host"};
    static_cast<void>(sharing_.Tick());
    EXPECT_TRUE(Shows("lblHandOver", "cannot be reached since"));
    EXPECT_TRUE(Shows("lblHandOver", "no route to host"));
    EXPECT_TRUE(Shows("lblHandOver", "4 uploads wait"));
    Press("cmdAgain");
    EXPECT_EQ(shared_.Agains, 1);
}

TEST_F(ArchiveSettingsTest, ClosedAtTheEndOfTheProgramItStaysClosed) {
    Open();
    form_->Unload();
    form_->ShowOrRaise();
    EXPECT_FALSE(form_->isVisible());
}

// ----- for the keyboard and those who cannot see it

TEST_F(ArchiveSettingsTest, EveryControlHasANameAndAKeyOfItsOwn) {
    OpenShared();
    std::map<QChar, std::string> keys;
    const auto take = [&keys](const QString& text) {
        const auto at = text.indexOf(u'&');
        if (at >= 0) {
            EXPECT_TRUE(keys.emplace(text[at + 1].toLower(), FromQt(text)).second) << FromQt(text);
        }
    };
    int stops = 0;
    for (QWidget* widget : form_->findChildren<QWidget*>()) {
        if (const auto* label = qobject_cast<QLabel*>(widget); label != nullptr) {
            take(label->buddy() != nullptr ? label->text() : QString());
        }
        if (const auto* button = qobject_cast<QAbstractButton*>(widget); button != nullptr) {
            take(button->text());
        }
        if (!widget->objectName().isEmpty() && !widget->objectName().startsWith(u"qt_") &&
            widget->isVisible() && (widget->focusPolicy() & Qt::TabFocus) != 0) {
            ++stops;
            EXPECT_FALSE(
                QAccessible::queryAccessibleInterface(widget)->text(QAccessible::Name).isEmpty())
                << FromQt(widget->objectName());
        }
    }
    EXPECT_GE(stops, 12);
    EXPECT_GE(keys.size(), 11U);
}

TEST_F(ArchiveSettingsTest, TheTabKeyGoesThroughTheWindowInItsOrder) {
    OpenShared();
    Control("chkShare").setFocus();
    std::vector<std::string> order;
    while (order.size() < 12) {
        order.push_back(FromQt(QApplication::focusWidget()->objectName()));
        QTest::keyClick(form_->windowHandle(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (std::vector<std::string>{"chkShare", "txtServer", "txtPort", "txtDatabase",
                                               "txtUser", "cmbPassword", "txtPassword", "cmbTls",
                                               "cmdTest", "cmdAgain", "cmdOK", "cmdCancel"}));
}

// ----- pictures

class ArchiveSettingsScreens : public ArchiveSettingsTest,
                               public ::testing::WithParamInterface<bool> {
 protected:
    void Picture(const char* name) {
        KeepOnBothScreens(*form_, QStringLiteral("frmArchiveSettings-") + QLatin1String(name),
                          GetParam());
    }

 private:
    const DeskColours colours_{GetParam()};
};

TEST_P(ArchiveSettingsScreens, OfSharingOnAndOffAndTrouble) {
    Open();
    Picture("off");
    form_.reset();
    OpenShared();
    Press("cmdTest");
    keeper_.Answer();
    shared_.Trial = {.Good = true, .MayFile = true, .Loggers = 12};
    EXPECT_TRUE(Shows("lblTest", "This works"));
    Picture("on");
    shared_.Now = {.State = SharingState::Away,
                   .Waiting = 4,
                   .Kind = ArchiveTrouble::Away,
                   .Words =
                       "connection to server at \"db\" (192.168.7.20), port 5433 failed: "
                       "Connection refused. Is the server running on that host and accepting "
                       "TCP/IP connections?"};
    static_cast<void>(sharing_.Tick());
    Press("cmdTest");
    keeper_.Answer();
    shared_.Trial = {.Kind = ArchiveTrouble::Away, .Words = shared_.Now.Words};
    EXPECT_TRUE(Shows("lblTest", "does not work"));
    keeper_.Trouble = "org.freedesktop.secrets was not provided by any .service files";
    Type("txtPassword", "secret");
    Press("cmdOK");
    keeper_.Answer();
    EXPECT_TRUE(Shows("lblHandOver", "since"));
    Picture("away");
    form_.reset();
    shared_.Missing = "This program has no driver for PostgreSQL.";
    Open();
    Picture("no-driver");
}

INSTANTIATE_TEST_SUITE_P(Palettes, ArchiveSettingsScreens, ::testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
}  // namespace testing_support
