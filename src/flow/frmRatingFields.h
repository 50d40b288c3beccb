#ifndef ORVIA_FLOW_FRM_RATING_FIELDS_H
#define ORVIA_FLOW_FRM_RATING_FIELDS_H

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "flow/rating_entry.h"

class QAction;
class QGridLayout;
class QLabel;

/// The figures that a kind of device asks for, a field each: caption, field, unit. Made anew for
/// each kind from what it tells of its fields.
class RatingFields final : public QWidget {
 public:
    /// Called with what was typed or chosen.
    using Typed = std::function<void(std::size_t field, const std::string& text)>;

    RatingFields(QWidget* parent, Typed typed);

    /// Makes the fields of the device's kind.
    void Build(const RatingEntry& entry);
    /// Has the fields show the device's texts and units.
    void Show(const RatingEntry& entry);
    /// Shows beside a field why it is to be looked at, or no longer if `why` is empty.
    void Mark(std::size_t field, const std::string& why);

    /// The fields in their order, for the tab key.
    [[nodiscard]] std::vector<QWidget*> Inputs() const;

 private:
    struct Field {
        QWidget* Input = nullptr;
        QLabel* Unit = nullptr;
        QAction* Sign = nullptr;  ///< the picture in a field that is to be looked at
        QString Help;
        QString Why;
    };

    [[nodiscard]] Field MakeField(const RatingField& told, std::size_t at);
    [[nodiscard]] QWidget* MakeText(const RatingField& told, std::size_t at);
    [[nodiscard]] QWidget* MakeList(const RatingField& told, std::size_t at);
    static void Describe(const Field& field);

    Typed typed_;
    QGridLayout* grid_;
    std::vector<Field> fields_;
    bool showing_ = false;  ///< the program, not the operator, changes the fields
};

#endif  // ORVIA_FLOW_FRM_RATING_FIELDS_H
