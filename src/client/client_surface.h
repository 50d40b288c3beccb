#ifndef ORVIA_CLIENT_CLIENT_SURFACE_H
#define ORVIA_CLIENT_CLIENT_SURFACE_H

#include "client/client_panel.h"

/// What the rules of a client window ask of the window on the screen.
class ClientSurface {
 public:
    virtual ~ClientSurface() = default;

    /// Copies what differs from the last call to the controls.
    virtual void ShowPanel(const ClientPanel& panel) = 0;
    /// Paints the bar columns anew.
    virtual void RepaintColumns() = 0;
    /// Asks for the focus; the activation arrives later, as an event.
    virtual void TakeFocus() = 0;
    /// Whether it is the active child of the main window.
    [[nodiscard]] virtual bool IsActiveChild() const = 0;
};

#endif  // ORVIA_CLIENT_CLIENT_SURFACE_H
