#pragma once

class QObject;

/// Cuts all connections from a page's controls to the page. First thing in a page's destructor: a control that loses
/// the focus while the page goes still reports its edit, and must not report it to a page whose form is gone.
void disconnectControls(QObject& page);
