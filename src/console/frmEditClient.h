#ifndef ORVIA_CONSOLE_FRM_EDIT_CLIENT_H
#define ORVIA_CONSOLE_FRM_EDIT_CLIENT_H

#include <QDialog>
#include <string>

#include "console/frmHexFields.h"
#include "platform/host.h"

class QLineEdit;

/// The dialog in which an entry of the book is edited.
class frmEditClient final : public QDialog {
    Q_OBJECT

 public:
    frmEditClient(const EntryTexts& shown, MessageBoxes& boxes, QWidget* parent);

    /// The fields. A name left as it was shown keeps its bytes, whatever they are; one above
    /// MostNameCharacters is cut to them, as the field shows it.
    [[nodiscard]] EntryTexts Texts() const;

    std::string Tag = "CANCEL";  ///< "FINISH" once the operator went on

 private:
    std::string name_;
    QLineEdit* txtClientRadioName_;
    HexAddressFields* fields_;
};

#endif  // ORVIA_CONSOLE_FRM_EDIT_CLIENT_H
