#include "link/frmConnectSetup.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QTextDocument>

#include "common/path_text.h"
#include "console/forms_bench.h"
#include "support/qt/run_events.h"
#include "support/virtual_host.h"

namespace {

using namespace forms_bench;
using testing_support::FreshFolder;
using testing_support::VirtualHost;
using testing_support::WriteFile;

class frmConnectSetupTest : public ::testing::Test {
 protected:
    frmConnectSetupTest() {
        settings.PortName = "COM5";
        settings.BaudRate = "57600";
        settings.AutoDisconnect = "1";
        settings.AddressBookPath = "/nowhere/site & co.obk";
        const std::string device = "SYSTEM\\CurrentControlSet\\Enum\\FTDIBUS\\A\\0";
        outside.LocalMachine.Set(device, "FriendlyName", "USB & Serial Port (COM5)");
        outside.LocalMachine.Set(device + "\\Device Parameters", "PortName", "COM5");
    }

    VirtualHost outside;
    Host host = outside.AsHost("/program");
    Settings settings;
};

TEST_F(frmConnectSetupTest, ShowsTheSettings) {
    frmConnectSetup form(settings, host, nullptr);
    Show(form);
    const auto* port = Find<QComboBox>(form, "cmbPort");
    EXPECT_EQ(port->count(), 16);
    EXPECT_EQ(port->currentText(), QStringLiteral("COM5 - USB & Serial Port"));
    EXPECT_EQ(port->itemText(0), QStringLiteral("COM1"));
    EXPECT_EQ(Find<QComboBox>(form, "cmbBaud")->currentText(), QStringLiteral("57600"));
    EXPECT_EQ(Find<QComboBox>(form, "cmbBaud")->count(), 6);
    EXPECT_TRUE(Find<QCheckBox>(form, "chkAutoDisconnect")->isChecked());
    const auto* path = Find<QLineEdit>(form, "txtAddressBook");
    EXPECT_EQ(path->text(), QStringLiteral("/nowhere/site & co.obk"));
    EXPECT_EQ(path->cursorPosition(), path->text().size());
    KeepPictures(form);
}

TEST_F(frmConnectSetupTest, FirstStartStandsOnTheFirstPortAnd38400) {
    settings = {};
    settings.PortName = "Com1";
    settings.BaudRate = "4800";
    frmConnectSetup form(settings, host, nullptr);
    EXPECT_EQ(Find<QComboBox>(form, "cmbPort")->currentIndex(), 0);
    EXPECT_EQ(Find<QComboBox>(form, "cmbBaud")->currentText(), QStringLiteral("38400"));
    EXPECT_FALSE(Find<QCheckBox>(form, "chkAutoDisconnect")->isChecked());
}

TEST_F(frmConnectSetupTest, OkKeepsTheChoices) {
    frmConnectSetup form(settings, host, nullptr);
    Show(form);
    Find<QComboBox>(form, "cmbPort")->setCurrentIndex(11);
    Find<QComboBox>(form, "cmbBaud")->setCurrentIndex(0);
    Click(form, "chkAutoDisconnect");
    Click(form, "cmdOK");
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(settings.PortName, "COM12");
    EXPECT_EQ(settings.BaudRate, "9600");
    EXPECT_EQ(settings.AutoDisconnect, "0");
    EXPECT_EQ(settings.AddressBookPath, "/nowhere/site & co.obk");
    EXPECT_TRUE(outside.Boxes.Shown.empty());
}

TEST_F(frmConnectSetupTest, PathThatDoesNotExistKeepsTheFormAndNothingElse) {
    frmConnectSetup form(settings, host, nullptr);
    Show(form);
    Find<QComboBox>(form, "cmbPort")->setCurrentIndex(0);
    Find<QLineEdit>(form, "txtAddressBook")->setText(QStringLiteral("/nowhere/else.obk"));
    Press(Qt::Key_Return);
    EXPECT_TRUE(form.isVisible());
    EXPECT_EQ(outside.Boxes.Shown.size(), 1U);
    Press(Qt::Key_Escape);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(settings.PortName, "COM5");
    EXPECT_EQ(settings.AddressBookPath, "/nowhere/site & co.obk");
}

TEST_F(frmConnectSetupTest, CancelKeepsNothing) {
    frmConnectSetup form(settings, host, nullptr);
    Show(form);
    Find<QComboBox>(form, "cmbPort")->setCurrentIndex(0);
    Click(form, "cmdCancel");
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(settings.PortName, "COM5");
}

TEST_F(frmConnectSetupTest, BrowseTakesTheChosenFile) {
    const std::string book = FreshFolder("browse") + "/b\xC3\xB6ok.obk";
    WriteFile(book, "\r\n");
    outside.Dialogs.Picks = {book};
    frmConnectSetup form(settings, host, nullptr);
    Show(form);
    Click(form, "cmdBrowse");
    ASSERT_EQ(outside.Dialogs.Queries.size(), 1U);
    const FileQuery& query = outside.Dialogs.Queries[0];
    EXPECT_EQ(query.Title, "Select Address Book");
    EXPECT_EQ(query.DefaultExtension, ".obk");
    EXPECT_EQ(query.Filter, "Address Book Files (*.obk)|*.obk");
    EXPECT_EQ(query.InitialName, JoinPath("/program", "*.obk"));
    EXPECT_EQ(Find<QLineEdit>(form, "txtAddressBook")->text(), ToQt(book));
    Click(form, "cmdOK");
    EXPECT_EQ(settings.AddressBookPath, book);
}

TEST_F(frmConnectSetupTest, EnterPressesTheButtonThatHasTheFocus) {
    frmConnectSetup form(settings, host, nullptr);
    Show(form);
    Find(form, "cmdBrowse")->setFocus();
    Press(Qt::Key_Return);
    EXPECT_EQ(outside.Dialogs.Queries.size(), 1U);
    EXPECT_TRUE(form.isVisible());
    Find<QComboBox>(form, "cmbPort")->setCurrentIndex(0);
    Find(form, "cmdCancel")->setFocus();
    Press(Qt::Key_Return);
    EXPECT_FALSE(form.isVisible());
    EXPECT_EQ(settings.PortName, "COM5") << "Cancel stores nothing";
}

TEST_F(frmConnectSetupTest, CancelledBrowseLeavesThePath) {
    frmConnectSetup form(settings, host, nullptr);
    Show(form);
    Click(form, "cmdBrowse");
    EXPECT_EQ(Find<QLineEdit>(form, "txtAddressBook")->text(),
              QStringLiteral("/nowhere/site & co.obk"));
}

TEST_F(frmConnectSetupTest, PathThatIsNoUtf8IsKeptAsItIs) {
    settings.AddressBookPath = "/nowhere/gr\xFC.obk";
    frmConnectSetup form(settings, host, nullptr);
    Show(form);
    Click(form, "cmdOK");
    EXPECT_EQ(settings.AddressBookPath, "/nowhere/gr\xFC.obk");
    EXPECT_FALSE(form.isVisible());
}

TEST_F(frmConnectSetupTest, MarksAPortThatAnotherProgramHas) {
    outside.Inquiry.Used[5] = {1234, "cu"};
    frmConnectSetup form(settings, host, nullptr);
    Show(form);
    const auto* port = Find<QComboBox>(form, "cmbPort");
    EXPECT_FALSE(port->itemIcon(4).isNull());
    EXPECT_FALSE(port->itemIcon(4).pixmap(16).isNull()) << "its picture is in the program";
    EXPECT_TRUE(port->itemIcon(5).isNull());
    EXPECT_EQ(port->itemText(4), QStringLiteral("COM5 - USB & Serial Port")) << "as ever";
    EXPECT_EQ(port->accessibleDescription(), QStringLiteral("In use by cu (process 1234)"));
    EXPECT_EQ(port->toolTip(),
              Qt::convertFromPlainText(QStringLiteral("In use by cu (process 1234)")));
    Find<QComboBox>(form, "cmbPort")->setCurrentIndex(5);
    EXPECT_EQ(port->accessibleDescription(), QString());
    Find<QComboBox>(form, "cmbPort")->setCurrentIndex(4);
    KeepPictures(form);
}

TEST_F(frmConnectSetupTest, FollowsPluggingAndUseWhileItIsOpenAndKeepsTheChoice) {
    host.TickMilliseconds = 1;
    frmConnectSetup form(settings, host, nullptr);
    Show(form);
    auto* port = Find<QComboBox>(form, "cmbPort");
    port->setCurrentIndex(6);
    const std::string device = "SYSTEM\\CurrentControlSet\\Enum\\FTDIBUS\\B\\0";
    outside.LocalMachine.Set(device, "FriendlyName", "Second (COM7)");
    outside.LocalMachine.Set(device + "\\Device Parameters", "PortName", "COM7");
    outside.Inquiry.Used[9] = {7, "cu"};
    ASSERT_TRUE(
        RunEventsUntil([&] { return port->itemText(6) == QStringLiteral("COM7 - Second"); }));
    EXPECT_FALSE(port->itemIcon(8).isNull());
    EXPECT_EQ(port->currentIndex(), 6);
    EXPECT_EQ(port->currentText(), QStringLiteral("COM7 - Second"));
    outside.LocalMachine.Set(device + "\\Device Parameters", "PortName", "COM8");
    outside.Inquiry.Used.clear();
    ASSERT_TRUE(RunEventsUntil([&] { return port->itemText(6) == QStringLiteral("COM7"); }));
    EXPECT_TRUE(port->itemIcon(8).isNull());
    EXPECT_EQ(port->count(), 16);
    EXPECT_EQ(port->currentIndex(), 6);
}

TEST_F(frmConnectSetupTest, ReachesEverybody) {
    frmConnectSetup form(settings, host, nullptr);
    Show(form);
    ExpectReach(form);
    EXPECT_EQ(TabOrder(form, "cmbPort"),
              (std::vector<std::string>{"cmbPort", "cmbBaud", "chkAutoDisconnect", "txtAddressBook",
                                        "cmdBrowse", "cmdOK", "cmdCancel"}));
}

}  // namespace
