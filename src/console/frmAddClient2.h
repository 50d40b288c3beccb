#ifndef ORVIA_CONSOLE_FRM_ADD_CLIENT2_H
#define ORVIA_CONSOLE_FRM_ADD_CLIENT2_H

#include <QDialog>
#include <string>

#include "console/frmHexFields.h"
#include "platform/host.h"

/// Second page of the add wizard: channel and MAC of the new client radio.
class frmAddClient2 final : public QDialog {
    Q_OBJECT

 public:
    frmAddClient2(const AddressTexts& offered, MessageBoxes& boxes, QWidget* parent);

    [[nodiscard]] AddressTexts Texts() const { return fields_->Texts(); }

    std::string Tag = "CANCEL";  ///< "FINISH" once the operator went on

 private:
    HexAddressFields* fields_;
};

#endif  // ORVIA_CONSOLE_FRM_ADD_CLIENT2_H
