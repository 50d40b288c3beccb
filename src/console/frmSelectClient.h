#ifndef ORVIA_CONSOLE_FRM_SELECT_CLIENT_H
#define ORVIA_CONSOLE_FRM_SELECT_CLIENT_H

#include <QDialog>
#include <string>
#include <vector>

class QListWidget;

/// The picker of a client radio: one click or Enter chooses, Escape leaves.
class frmSelectClient final : public QDialog {
    Q_OBJECT

 public:
    frmSelectClient(const std::vector<std::string>& names, QWidget* parent);

    /// Number of the row chosen, from 1.
    [[nodiscard]] int Chosen() const { return chosen_; }

    void reject() override;

    std::string Tag;  ///< "Okay" once a row was chosen

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

 private:
    void Choose(int row);

    QListWidget* lstClients_;
    int chosen_ = 0;
};

#endif  // ORVIA_CONSOLE_FRM_SELECT_CLIENT_H
