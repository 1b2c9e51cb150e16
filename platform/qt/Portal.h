#pragma once

#include "platform/qt/Bus.h"

namespace zelto {

// Calls a method of the desktop portal on the toolkit's connection to the session bus.
QDBusPendingCall CallPortal(const char* interface, const char* method,
                            const QVariantList& arguments);

// Hides the memory of this process once the portal knows the process or cannot be called. The
// portal looks up a caller at its first call on a connection. It refuses a caller that hides its
// memory. Takes dark colours if the portal answers that the desktop is dark and Qt's are light.
void ReadPortalSettings();

}  // namespace zelto
