#include "app/frmMain_fixture.h"

namespace testing_support {

namespace {

Host WithArchive(Host host, ArchiveStore* archive, SharedArchive* shared,
                 PasswordKeeper* passwords) {
    host.Archive = archive;
    host.Shared = shared;
    host.Passwords = passwords;
    return host;
}

}  // namespace

MainWindowTest::MainWindowTest(ArchiveStore* archive, SharedArchive* shared,
                               PasswordKeeper* passwords)
    : state_(WithArchive(host_.AsHost(folder_), archive, shared, passwords)) {
    std::string book;
    for (int number = 1; number <= 3; ++number) {
        const simulator::LoggerSetup site = BasicSite(number);
        host_.Virtual.Network.AddLogger(site);
        book += "\"" + site.Settings.Name + "\", 10, 00A09600000" + std::to_string(number) + "\r\n";
    }
    const std::string path = JoinPath(folder_, "site.obk");
    WriteFile(path, book + "\r\n");
    host_.Virtual.Store.Values["Configuration/AddressBook"] = path;
    host_.Virtual.Store.Values["Configuration/Port"] = "COM1";
    window_ = std::make_unique<frmMain>(state_);
}

MainWindowTest::~MainWindowTest() {
    state_.LinkRecord.ShuttingDown = True;
    window_->CloseAllChildForms();
    window_.reset();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void MainWindowTest::Start(const std::function<void(frmConnect&)>& inDialog) {
    QTimer watch;
    bool done = false;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        auto* dialog = dynamic_cast<frmConnect*>(QApplication::activeModalWidget());
        if (dialog != nullptr && !done) {
            done = true;
            inDialog(*dialog);
        }
    });
    watch.start(1);
    window_->Load();
}

void MainWindowTest::StartConnected() {
    Start([](frmConnect& dialog) {
        dialog.findChild<QPushButton*>(QStringLiteral("cmdConnect"))->click();
    });
    ASSERT_EQ(state_.LinkRecord.Connected, True);
}

void MainWindowTest::Click(const char* name) {
    ClickAndLater(name, 0, [] {});
}

void MainWindowTest::ClickAndLater(const char* name, int milliseconds,
                                   std::function<void()> action) {
    auto& button = Find<QPushButton>(name);
    ASSERT_TRUE(host_.RunUntil([&] { return button.isEnabled(); })) << name;
    host_.Virtual.Time.In(milliseconds * Millisecond, std::move(action));
    QTest::mouseClick(&button, Qt::LeftButton);
}

void MainWindowTest::ClickClient(int number, Qt::MouseButton button) {
    auto& list = Find<QListWidget>("lvwClients");
    const QRect item = list.visualItemRect(list.item(number - 1));
    QTest::mouseClick(list.viewport(), button, {}, item.center());
}

std::shared_ptr<frmClient> MainWindowTest::WindowOf(int entry) {
    return std::dynamic_pointer_cast<frmClient>(
        state_.Windows.At(state_.Book.Entries[entry].WindowIndex));
}

void MainWindowTest::Once(const std::function<bool()>& moment,
                          const std::function<void()>& action) {
    const auto done = std::make_shared<bool>(false);
    for (int milliseconds = 50; milliseconds < 5000; milliseconds += 50) {
        host_.Virtual.Time.In(milliseconds * Millisecond, [=] {
            if (!*done && moment()) {
                *done = true;
                action();
            }
        });
    }
}

void MainWindowTest::ExpectAtRest() {
    EXPECT_EQ(state_.OperationsRecord.OperationBusy, False);
    EXPECT_EQ(state_.LinkRecord.CommBusy, False);
    EXPECT_EQ(state_.SamplingRecord.SingleSample, 0);
    EXPECT_EQ(window_->cursor().shape(), Qt::ArrowCursor);
}

}  // namespace testing_support
