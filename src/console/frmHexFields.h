#ifndef ORVIA_CONSOLE_FRM_HEX_FIELDS_H
#define ORVIA_CONSOLE_FRM_HEX_FIELDS_H

#include <QObject>
#include <array>

#include "console/entry_texts.h"
#include "console/hex_field.h"
#include "platform/host.h"

class FocusGuard;
class QGridLayout;
class QKeyEvent;
class QLineEdit;
class QWidget;

/// The entry fields of a radio's address, `txtChannel` and `txtMAC(0)` to `txtMAC(5)`, with their
/// keys, their validation and the focus that moves on when a field is complete.
class HexAddressFields final : public QObject {
 public:
    /// Makes the fields in `window`, in tab order; behind the last the focus moves to `next`.
    HexAddressFields(QWidget& window, FocusGuard& guard, MessageBoxes& boxes, QWidget& next);

    /// Adds the fields and their captions to a layout of two columns, from `row` on.
    void AddTo(QGridLayout& layout, int row);

    /// Shows an address. That is no typing: nothing is validated and the focus stays.
    void SetTexts(const AddressTexts& texts);
    /// What the fields hold, valid or not.
    [[nodiscard]] AddressTexts Texts() const;

    /// The field of the channel, and that of the last byte of the MAC, for the tab order.
    [[nodiscard]] QWidget* First() const;
    [[nodiscard]] QWidget* Last() const;

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    [[nodiscard]] QLineEdit* MakeField(QWidget& window, const QString& name) const;
    [[nodiscard]] int NumberOf(const QObject* widget) const;
    [[nodiscard]] bool SwallowsKey(int field, const QKeyEvent& event);
    void TakeFocus(int field, Qt::FocusReason reason);
    void EndClick(QLineEdit& field);
    [[nodiscard]] bool Validate(int field);
    void TextChanged(int field);

    MessageBoxes& boxes_;
    QWidget& next_;
    std::array<QLineEdit*, HexFields> fields_{};
    HexFocus focus_;
    bool selectsOnRelease_ = false;
    bool replacing_ = false;
};

#endif  // ORVIA_CONSOLE_FRM_HEX_FIELDS_H
