#pragma once

#include "app/MessageService.h"
#include "common/Random.h"

#include <QLocale>
#include <QString>

namespace kelvora {

// WindowContext is what every part of the main window shares: the dialog seam, the random
// source and the window's current language.
struct WindowContext {
    MessageService& messages;
    RandomSource& random;
    int languageOffset;

    // Text is the catalogue text of germanId in the window's language, "%s" filled with s
    // and "%d" with d.
    QString Text(int germanId, const QString& s = {}, const QString& d = {}) const;
    // Filter turns a catalogue filter ("All files (*.*)|*.*") into a file dialog's filter.
    QString Filter(int germanId) const;
    // Locale writes numbers and sizes as the window's language does.
    QLocale Locale() const;
    // ShowMessage shows the catalogue text of germanId with an OK button and the default title.
    void ShowMessage(int germanId, const QString& s = {},
                     MessageService::Icon icon = MessageService::Icon::Information) const;
};

} // namespace kelvora
