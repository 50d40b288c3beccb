#include "client/view_memory.h"

#include "client_fixture.h"

namespace client_test {
namespace {

using ViewMemory = ClientTest;

std::int16_t AddRadio(AddressBook& book, std::uint8_t last) {
    ClientRadio entry;
    entry.Mac = {0x00, 0xA0, 0x96, 0x0F, 0x1E, last};
    return static_cast<std::int16_t>(book.Entries.Append(entry));
}

TEST_F(ViewMemory, ANewWindowOfTheRadioHasTheViewOfTheLastOne) {
    const std::int16_t number = AddRadio(console.State.Book, 0x2D);
    window.TakeClientIndex(number);
    EXPECT_EQ(window.Record.DisplayMode, DisplayMedium) << "nothing was kept yet";
    window.ChooseDisplay(DisplayWide);
    ClientModel next(console.Context, surface);
    next.Load();
    next.TakeClientIndex(number);
    EXPECT_EQ(next.Record.DisplayMode, DisplayWide);
    EXPECT_EQ(surface.Shown.DisplayMode, DisplayWide);
}

TEST_F(ViewMemory, EachRadioHasItsOwn) {
    window.TakeClientIndex(AddRadio(console.State.Book, 1));
    window.ChooseDisplay(DisplayMeter);
    ClientModel other(console.Context, surface);
    other.Load();
    other.TakeClientIndex(AddRadio(console.State.Book, 2));
    EXPECT_EQ(other.Record.DisplayMode, DisplayMedium);
}

TEST_F(ViewMemory, AWindowThatMovesInTheBookKeepsItsView) {
    const std::int16_t first = AddRadio(console.State.Book, 1);
    const std::int16_t second = AddRadio(console.State.Book, 2);
    KeepView(console.Context.Outside.Store, console.State.Book.Entries[second].Mac, DisplaySmall);
    window.TakeClientIndex(first);
    window.TakeClientIndex(second);
    EXPECT_EQ(window.Record.DisplayMode, DisplayMedium);
}

TEST_F(ViewMemory, AFlowViewThatIsRefusedIsNotKept) {
    const std::int16_t number = AddRadio(console.State.Book, 1);
    window.TakeClientIndex(number);
    LoggerState state;
    state.NumAnalogChannels = 8;
    Know(state);
    window.ChooseDisplay(DisplayFlow);
    EXPECT_EQ(window.Record.DisplayMode, DisplayMeter);
    EXPECT_EQ(KeptView(console.Context.Outside.Store, console.State.Book.Entries[number].Mac),
              DisplayMeter);
}

TEST_F(ViewMemory, AnotherWordThanAViewIsNone) {
    SettingsStore& store = console.Context.Outside.Store;
    store.Write("Views", "00A0960F1E2D", "huge");
    EXPECT_EQ(KeptView(store, {0x00, 0xA0, 0x96, 0x0F, 0x1E, 0x2D}), std::nullopt);
    store.Write("Views", "00A0960F1E2D", "flow");
    EXPECT_EQ(KeptView(store, {0x00, 0xA0, 0x96, 0x0F, 0x1E, 0x2D}), DisplayFlow);
}

}  // namespace
}  // namespace client_test
