#include "console/list_drop.h"

#include "console/book_operations.h"
#include "console/client_list.h"

namespace {

int ItemUnder(const ClientListView& list, int y) {
    return ItemAtY(y, list.ItemCount(), [&list](int item) { return list.ItemTop(item); });
}

/// The first item of that text, 0 if there is none.
int ItemOfText(const ClientListView& list, const std::string& text) {
    for (int item = 1; item <= list.ItemCount(); ++item) {
        if (list.ItemText(item) == text) {
            return item;
        }
    }
    return 0;
}

/// A client that is sampled continuously stays so under its new number.
void FollowSampledClient(Sampling& sampling, int a, int b) {
    if (sampling.ContinuousMode == SamplingIdle) {
        return;
    }
    if (sampling.ContinuousClient == a) {
        sampling.ContinuousClient = static_cast<std::int16_t>(b);
    } else if (sampling.ContinuousClient == b) {
        sampling.ContinuousClient = static_cast<std::int16_t>(a);
    }
}

}  // namespace

void DragOverList(ClientListView& list, int y) {
    if (const int item = ItemUnder(list, y); item != 0) {
        list.SelectItem(item);
    }
}

void DropOnList(const DropContext& context, const std::optional<std::string>& dragged, int y) {
    ClientListView& list = context.list;
    if (context.operations.OperationBusy != False || !dragged || list.ItemCount() < 2) {
        return;
    }
    const int target = ItemUnder(list, y);
    const int source = ItemOfText(list, *dragged);
    const auto& entries = context.book.Entries;
    if (!entries.Holds(source) || !entries.Holds(target)) {
        return;
    }
    SwapClientRadios(context.book, context.windows, source, target);
    FollowSampledClient(context.sampling, source, target);
    RefreshClientList(context.book, context.view);
    list.SelectItem(target);
    SaveBook(context.status, context.settings.AddressBookPath, context.book);
}
