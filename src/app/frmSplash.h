#ifndef ORVIA_APP_FRM_SPLASH_H
#define ORVIA_APP_FRM_SPLASH_H

#include <QLabel>

/// The picture that stands while the console starts; as large as the picture.
class frmSplash final : public QLabel {
 public:
    frmSplash();
};

#endif  // ORVIA_APP_FRM_SPLASH_H
