#include "archive/frmArchiveSettings.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <utility>

#include "archive/sharing_words.h"
#include "common/number_text.h"
#include "common/text.h"
#include "platform/qt/text_qt.h"

namespace {

constexpr int InKeyring = 0;
constexpr const char* Title = "Archive Settings";

}  // namespace

// ----- opening and closing

void frmArchiveSettings::ShowOrRaise() {
    if (unloaded_) {
        return;
    }
    if (!isVisible()) {
        ShowKept();
    }
    show();
    raise();
    activateWindow();
    refresh_.start();
}

void frmArchiveSettings::Unload() {
    unloaded_ = true;
    close();
}

void frmArchiveSettings::closeEvent(QCloseEvent* event) {
    StopWaiting();
    refresh_.stop();
    // It is not to lie about.
    txtPassword_->clear();
    event->accept();
}

/// What is asked is no longer waited for.
void frmArchiveSettings::StopWaiting() {
    question_.reset();
    trying_ = keeping_ = false;
    work_.outside.Shared->ForgetTry();
}

// ----- what is chosen

void frmArchiveSettings::ShowKept() {
    const SharingChoice& kept = work_.sharing.Chosen();
    chkShare_->setChecked(kept.On);
    txtServer_->setText(ToQt(kept.Place.Server));
    txtPort_->setText(ToQt(IntegerToText(kept.Place.Port)));
    txtDatabase_->setText(ToQt(kept.Place.Database));
    txtUser_->setText(ToQt(kept.Place.User));
    cmbTls_->setCurrentIndex(static_cast<int>(kept.Place.Tls));
    const bool keyring = work_.outside.Passwords != nullptr && !work_.outside.Passwords->WhyNot();
    cmbPassword_->setCurrentIndex(keyring && kept.Keyring ? InKeyring : 1);
    cmbPassword_->setEnabled(keyring);
    cmbPassword_->setToolTip(
        keyring ? QStringLiteral("The keyring of the desktop keeps it, or a file of yours has it.")
                : QStringLiteral("This program was built without the keyring. Write the password "
                                 "to the file pgpass."));
    txtPassword_->clear();
    lblTest_->clear();
    lblState_->clear();
    ShowStates();
    Refresh();
}

void frmArchiveSettings::ShowStates() {
    const auto whyNot = work_.outside.Shared->WhyNot();
    const bool shares = chkShare_->isChecked() && !whyNot;
    const bool free = !keeping_;
    chkShare_->setEnabled(!whyNot && free);
    lblWhyNot_->setText(ToQt(whyNot.value_or("")));
    lblWhyNot_->setVisible(whyNot.has_value());
    grpServer_->setEnabled(shares && free);
    const bool keyring = cmbPassword_->currentIndex() == InKeyring;
    txtPassword_->setEnabled(keyring);
    const bool known =
        work_.sharing.Chosen().Keyring && !work_.sharing.Chosen().Place.Server.empty();
    txtPassword_->setPlaceholderText(!keyring ? QStringLiteral("as the file pgpass has it")
                                     : known  ? QStringLiteral("as it is kept")
                                              : QString());
    cmdTest_->setEnabled(!trying_);
    cmdAgain_->setEnabled(work_.sharing.IsOn() && free);
    cmdOK_->setEnabled(free);
}

/// What was typed; nothing if the operator was told what is wrong with it.
std::optional<SharingChoice> frmArchiveSettings::Chosen() {
    SharingChoice choice = work_.sharing.Chosen();
    choice.On = chkShare_->isChecked();
    if (!choice.On) {
        return choice;
    }
    choice.Keyring = cmbPassword_->currentIndex() == InKeyring;
    const auto flaw = TakePlace({.Server = FromQt(txtServer_->text()),
                                 .Port = FromQt(txtPort_->text()),
                                 .Database = FromQt(txtDatabase_->text()),
                                 .User = FromQt(txtUser_->text()),
                                 .Tls = static_cast<ServerTls>(cmbTls_->currentIndex())},
                                choice.Place);
    if (!flaw) {
        return choice;
    }
    work_.outside.Boxes.Show({.Text = flaw->Words, .Title = Title, .Icon = BoxIcon::Exclamation});
    QLineEdit* field = flaw->Field == PlaceField::Server     ? txtServer_
                       : flaw->Field == PlaceField::Port     ? txtPort_
                       : flaw->Field == PlaceField::Database ? txtDatabase_
                                                             : txtUser_;
    field->setFocus();
    field->selectAll();
    return std::nullopt;
}

void frmArchiveSettings::Accept() {
    const auto choice = Chosen();
    if (!choice || unloaded_) {
        return;
    }
    if (choice->On && choice->Keyring && !txtPassword_->text().isEmpty()) {
        KeepPassword(*choice);
    } else {
        Finish(*choice);
    }
}

/// Has the keyring take the password that was typed, and goes on when that has.
void frmArchiveSettings::KeepPassword(const SharingChoice& choice) {
    keeping_ = true;
    question_ = std::make_shared<int>();
    Tell("The keyring is being asked to keep the password...");
    ShowStates();
    work_.outside.Passwords->Keep(
        PasswordName(choice.Place), FromQt(txtPassword_->text()),
        [this, choice, question = std::weak_ptr<int>(question_)](const KeeperAnswer& answer) {
            if (question.expired()) {
                return;
            }
            question_.reset();
            keeping_ = false;
            if (answer.Done) {
                Finish(choice);
                return;
            }
            Tell("The keyring does not take the password: " + answer.Words +
                 std::string(LineBreak) +
                 "\"Left to the File pgpass\" does without: write it there.");
            ShowStates();
        });
}

void frmArchiveSettings::Finish(const SharingChoice& choice) {
    const QString typed = txtPassword_->text();
    const bool given = choice.Keyring && !typed.isEmpty();
    const bool same = choice == work_.sharing.Chosen() && !given;
    // What goes on as it is need not be begun anew.
    if (!same) {
        work_.sharing.Choose(choice, given ? std::optional(FromQt(typed)) : std::nullopt);
    }
    close();
}

// ----- test and hand-over

void frmArchiveSettings::Test() {
    const auto choice = Chosen();
    if (!choice || unloaded_) {
        return;
    }
    trying_ = true;
    lblTest_->setText(QStringLiteral("The server is being asked..."));
    ShowStates();
    const ServerPlace place = choice->Place;
    const std::string typed = FromQt(txtPassword_->text());
    if (!choice->Keyring || !typed.empty()) {
        work_.outside.Shared->Try(place, choice->Keyring ? typed : std::string());
    } else {
        AskForPassword(place, [this, place](const std::string& password) {
            work_.outside.Shared->Try(place, password);
        });
    }
}

void frmArchiveSettings::AskForPassword(const ServerPlace& place,
                                        const std::function<void(std::string)>& then) {
    question_ = std::make_shared<int>();
    work_.outside.Passwords->Ask(
        PasswordName(place),
        [this, then, question = std::weak_ptr<int>(question_)](const KeeperAnswer& answer) {
            if (question.expired()) {
                return;
            }
            question_.reset();
            if (!answer.Done) {
                Tell("The keyring does not answer: " + answer.Words);
            }
            then(answer.Password);
        });
}

void frmArchiveSettings::HandOverAgain() {
    work_.outside.Shared->HandOverAgain();
    Tell("What is missing there is handed over once more.");
}

void frmArchiveSettings::Refresh() {
    if (const auto trial = work_.outside.Shared->Tried(); trial && trying_) {
        trying_ = false;
        lblTest_->setText(ToQt(TrialText(*trial)));
        ShowStates();
    }
    const QString text = ToQt(work_.sharing.StateText());
    if (lblHandOver_->text() != text) {
        lblHandOver_->setText(text);
    }
}

void frmArchiveSettings::Tell(const std::string& text) {
    lblState_->setText(ToQt(text));
}
