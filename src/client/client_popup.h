#ifndef ORVIA_CLIENT_CLIENT_POPUP_H
#define ORVIA_CLIENT_CLIENT_POPUP_H

#include <string>

/// The menu of the main window that a client window shows at the pointer.
class ClientPopup {
 public:
    virtual ~ClientPopup() = default;

    /// Shows `mnuClientPopup` at the pointer, with that caption on its row
    /// `mnuClientSampleContinuously`.
    virtual void ShowClientPopup(const std::string& sampleCaption) = 0;
};

#endif  // ORVIA_CLIENT_CLIENT_POPUP_H
