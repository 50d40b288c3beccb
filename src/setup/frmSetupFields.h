#ifndef ORVIA_SETUP_FRMSETUPFIELDS_H
#define ORVIA_SETUP_FRMSETUPFIELDS_H

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "setup/setup_controls.h"
#include "setup/setup_validators.h"

class QCheckBox;
class QComboBox;
class QLineEdit;
class QRadioButton;
class QString;
class QWidget;

/// Where a control's value stands among the controls' values.
template <typename Value>
using Place = std::function<Value&(SetupControls&)>;

/// Fills a list of units anew: with those of analog channels, or with those of pulse channels.
void FillUnitsCombo(QComboBox& combo, bool analog);

/// The controls of the set-up that hold a value, each bound to its place. Makes them, so that none
/// is made without one.
class frmSetupFields {
 public:
    /// Says what becomes of a field's text when it is left.
    using Validator = std::function<FieldCheck(std::string_view)>;

    /// A field whose text is validated when it is left.
    struct Field {
        QWidget* Widget;
        Place<std::string> Value;
        Validator Check;  ///< none: any text stands as it is
    };

    /// A text field with room for `characters` digits.
    QLineEdit* Text(QWidget* parent, const QString& name, Place<std::string> place, Validator check,
                    int characters);
    /// A list that can be typed over; `items` may be empty.
    QComboBox* Editable(QWidget* parent, const QString& name,
                        std::span<const std::string_view> items, Place<std::string> place,
                        Validator check);
    /// The same with the numbers from 0 to `last`.
    QComboBox* Numbers(QWidget* parent, const QString& name, int last, Place<std::string> place);
    /// A list to choose from.
    QComboBox* List(QWidget* parent, const QString& name, std::span<const std::string_view> items,
                    Place<int> place);
    /// A check box.
    QCheckBox* Check(QWidget* parent, const QString& name, const char* caption, Place<bool> place);
    /// One of a group of options; `value` is what its place holds while it is selected.
    QRadioButton* Option(QWidget* parent, const QString& name, const char* caption,
                         Place<int> place, int value);

    /// The values of all controls; what no control holds is as it is at first.
    [[nodiscard]] SetupControls Values() const;
    /// Has the controls show the values.
    void Show(SetupControls values);

    /// All fields with a text, those without a validator too. No control is made behind this call.
    [[nodiscard]] const std::vector<Field>& Validated() const { return texts_; }

    /// Text of a field: a line, or a list that can be typed over.
    [[nodiscard]] static std::string TextOf(const QWidget* widget);
    /// Has such a field show the text; a list selects the item of that text, if it has one.
    static void SetText(QWidget* widget, const std::string& text);

 private:
    struct ListField {
        QComboBox* Widget;
        Place<int> Value;
    };
    struct CheckField {
        QCheckBox* Widget;
        Place<bool> Value;
    };
    struct OptionField {
        QRadioButton* Widget;
        Place<int> Value;
        int Code;
    };

    std::vector<Field> texts_;
    std::vector<ListField> lists_;
    std::vector<CheckField> checks_;
    std::vector<OptionField> options_;
};

#endif  // ORVIA_SETUP_FRMSETUPFIELDS_H
