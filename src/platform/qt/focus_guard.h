#ifndef ORVIA_PLATFORM_QT_FOCUS_GUARD_H
#define ORVIA_PLATFORM_QT_FOCUS_GUARD_H

#include <QEvent>
#include <QObject>
#include <QPointF>
#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QKeyEvent;

/// Validates the fields of a window when the user leaves them, before anything happens: a mouse
/// press, wheel, Tab, mnemonic, shortcut or Enter that would move the focus, press a button, turn
/// a tab or open a menu first runs the validator of the field that has the focus, once, and does
/// nothing if that refuses. Enter presses the button that has the focus, elsewhere the default
/// one. Moving about inside the field, its own popup and its context menu are
/// no leaving. Closing the window, losing activation and focus set by the program validate
/// nothing.
class FocusGuard final : public QObject {
 public:
    /// Guards `window` (a top-level or child window) and belongs to it.
    explicit FocusGuard(QWidget* window);

    /// `validate` says whether the field may be left; it may show a message.
    void AddField(QWidget* field, std::function<bool()> validate);
    /// Nothing that leads to `button`, a press or a key, validates. The field that was left so is
    /// validated when the focus moves on from the button.
    void LeavesWithoutValidating(QWidget* button);
    /// Whether the field in use, or the one that was left freely for the button that has the focus
    /// now, may be left. Runs its validator, for who is about to take its text without any leaving;
    /// a field that refuses gets the focus back.
    [[nodiscard]] bool Accepts();

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    struct Field {
        QPointer<QWidget> Widget;
        std::function<bool()> Validate;
    };
    /// A field in use outlives its window, which may go while it is validated.
    using FieldRef = std::shared_ptr<const Field>;
    /// Tells one input event from the next: an event that nobody takes comes again for each parent.
    struct Input {
        int Type = 0;
        quint64 Time = 0;
        QPointF Position;
        int Key = 0;
        bool operator==(const Input&) const = default;
    };
    enum class Way { Stays, LeavesFreely, Leaves };

    [[nodiscard]] QWidget* TargetOf(QObject* watched, const QEvent& event) const;
    [[nodiscard]] static Input InputOf(const QEvent& event);
    [[nodiscard]] bool IsInside(const QObject* object) const;
    [[nodiscard]] bool IsFree(const QWidget* widget) const;
    [[nodiscard]] FieldRef FieldAt(const QWidget* widget) const;
    [[nodiscard]] FieldRef FieldInUse() const;
    [[nodiscard]] Way WayOf(QObject* target, const QEvent& event, const QWidget* field) const;
    [[nodiscard]] Way WayByPointer(QWidget* pressed, QEvent::Type type, const QWidget* field) const;
    [[nodiscard]] Way WayByKey(const QKeyEvent& event, const QWidget* field) const;
    [[nodiscard]] Way WayByShortcut(const QObject* target, const QWidget* field) const;
    [[nodiscard]] Way WayTo(const QWidget* place, const QWidget* field) const;

    bool Swallows(QObject* target, const QEvent& event);
    bool Refuses(const Field& field);  // true also if the guard went meanwhile
    void NoteFocusOut(const QObject* left, Qt::FocusReason reason);
    void ValidateBehindMenuBar();

    QWidget* window_;
    std::vector<FieldRef> fields_;
    std::vector<QPointer<QWidget>> free_;
    QPointer<QWidget> leftFreely_;     // field that still owes its validation
    QPointer<QWidget> leftByPointer_;  // field that a press has just taken the focus from
    QPointer<QWidget> leftForMenuBar_;
    QTimer menuBarCheck_;
    std::optional<Input> passed_;
    bool validating_ = false;
};

#endif  // ORVIA_PLATFORM_QT_FOCUS_GUARD_H
