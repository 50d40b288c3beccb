#include "collect/noted_boxes.h"

#include "collect/collect_words.h"

BoxAnswer NotedBoxes::Show(const BoxContent& box) {
    texts_.push_back(InOneLine(box.Text + (box.Details.empty() ? "" : " " + box.Details)));
    return AnswerOfClosedBox(box.Buttons);
}

OperationContext WithBoxes(const OperationContext& from, MessageBoxes& boxes) {
    return {.radio = {.link = from.radio.link,
                      .settings = from.radio.settings,
                      .view = from.radio.view,
                      .boxes = boxes,
                      .status = from.radio.status,
                      .inquiry = from.radio.inquiry,
                      .registry = from.radio.registry},
            .sampling = from.sampling,
            .operations = from.operations,
            .book = from.book,
            .windows = from.windows,
            .global = from.global,
            .newest = from.newest,
            .exchange = from.exchange,
            .clock = from.clock,
            .log = from.log};
}
