#pragma once

#include <QWidget>

namespace zelto {

// Gives each window its role, and masks the characters in the change notifications of password
// fields. By default, Qt reports the typed characters to assistive technology.
void SetUpAccessibility();
// Asks assistive technology to speak the text, with Qt 6.8 or later.
void Announce(QWidget& widget, const QString& text);

}  // namespace zelto
