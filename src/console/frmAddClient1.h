#ifndef ORVIA_CONSOLE_FRM_ADD_CLIENT1_H
#define ORVIA_CONSOLE_FRM_ADD_CLIENT1_H

#include <QDialog>
#include <string>

#include "platform/host.h"
#include "records/address_book.h"

class QLineEdit;

/// First page of the add wizard: the name of a new client radio.
class frmAddClient1 final : public QDialog {
    Q_OBJECT

 public:
    frmAddClient1(const AddressBook& book, MessageBoxes& boxes, QWidget* parent);

    [[nodiscard]] std::string Name() const;

    std::string Tag = "CANCEL";  ///< "NEXT" once the operator went on

 private:
    QLineEdit* txtClientRadioName_;
};

#endif  // ORVIA_CONSOLE_FRM_ADD_CLIENT1_H
