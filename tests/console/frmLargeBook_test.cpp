#include <QLineEdit>
#include <QPushButton>
#include <cstdio>
#include <ctime>

#include "console/book_operations.h"
#include "console/client_list.h"
#include "console/frmEditClient.h"
#include "link/supervision.h"
#include "main_console_bench.h"

namespace {

using namespace forms_bench;
using namespace testing_support;

class LargeBookTest : public frmMainConsoleTest {
 protected:
    static constexpr int Entries = 10000;
    // Milliseconds that nobody notices. A build to be looked into is slower, yet a step that looks
    // at all entries for each entry would take it seconds.
#ifdef NDEBUG
    static constexpr int VisibleDelay = 50;
#else
    static constexpr int VisibleDelay = 1000;
#endif

    LargeBookTest() {
        for (int number = 4; number <= Entries; ++number) {
            ClientRadio entry;
            entry.Name = "Site " + std::to_string(number);
            entry.Mac = {0,
                         0xA0,
                         0x96,
                         1,
                         static_cast<std::uint8_t>(number >> 8),
                         static_cast<std::uint8_t>(number)};
            state_.Book.Entries.Append(entry);
        }
        RefreshClientList(state_.Book, *window_);
        SaveAddressBook(state_.SettingsRecord.AddressBookPath, state_.Book);
        QCoreApplication::processEvents();
    }

    template <typename Work>
    void Measure(const char* what, Work work) {
        // Processor time: what else the machine does meanwhile is no matter.
        const std::clock_t start = std::clock();
        work();
        QCoreApplication::processEvents();
        const double took = static_cast<double>(std::clock() - start) * 1000 / CLOCKS_PER_SEC;
        std::printf("book of %d entries: %-7s %6.2f ms\n", state_.Book.Entries.UpperBound(), what,
                    took);
        EXPECT_LT(took, VisibleDelay) << what;
    }
};

TEST_F(LargeBookTest, IsWorkedWithWithoutVisibleDelay) {
    Measure("scroll", [this] { List().scrollToBottom(); });
    Measure("drag", [this] { DragOverList(List(), List().viewport()->height() / 2); });
    Measure("drop", [this] { Drop(QStringLiteral("Site 9000"), QPoint(5, 40)); });
    const ModalAnswer<frmEditClient> edit([](frmEditClient& form) {
        forms_bench::Find<QLineEdit>(form, "txtClientRadioName")->setText(QStringLiteral("Edited"));
        forms_bench::Find<QPushButton>(form, "cmdNext")->click();
    });
    AwaitRow("mnuDeleteClient");
    List().setCurrentRow(5000);
    Measure("edit", [this] { Choose("mnuEditClient"); });
    Measure("delete", [this] {
        List().setCurrentRow(7000);
        Choose("mnuDeleteClient");
    });
    Measure("tick", [this] {
        comm::SuperviseTick({state_.LinkRecord, state_.SamplingRecord, state_.OperationsRecord,
                             state_.Book, state_.Windows, *window_, state_.Status});
    });
    EXPECT_EQ(List().ItemCount(), Entries - 1);
}

TEST_F(LargeBookTest, NamesOfAMegabyteStopNoWindow) {
    while (state_.Book.Entries.UpperBound() > 50) {
        state_.Book.Entries.Remove(state_.Book.Entries.UpperBound());
    }
    for (ClientRadio& entry : state_.Book.Entries) {
        entry.Name = std::string(std::size_t{1} << 20U, 'n');
    }
    Measure("list", [this] {
        RefreshClientList(state_.Book, *window_);
        List().grab();
    });
    Measure("scroll", [this] {
        List().scrollToBottom();
        List().grab();
    });
    List().setCurrentRow(7);
    Measure("open", [this] {
        OpenOrActivateClient(state_.Book, state_.Windows, *window_);
        window_->grab();
    });
    boxes_.Answers.push_back(BoxAnswer::No);
    Measure("delete", [this] {
        List().setCurrentRow(8);
        Choose("mnuDeleteClient");
    });
}

}  // namespace
