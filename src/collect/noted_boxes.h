#ifndef ORVIA_COLLECT_NOTED_BOXES_H
#define ORVIA_COLLECT_NOTED_BOXES_H

#include <string>
#include <vector>

#include "console/logger_operations.h"
#include "platform/host.h"

/// Boxes that nobody sees: their texts are kept, each in one line, and they are closed by their
/// frames.
class NotedBoxes final : public MessageBoxes {
 public:
    explicit NotedBoxes(std::vector<std::string>& texts) : texts_(texts) {}

    BoxAnswer Show(const BoxContent& box) override;

 private:
    std::vector<std::string>& texts_;
};

/// The same context, its boxes being others.
[[nodiscard]] OperationContext WithBoxes(const OperationContext& from, MessageBoxes& boxes);

#endif  // ORVIA_COLLECT_NOTED_BOXES_H
