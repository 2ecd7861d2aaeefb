#pragma once

// What every window test shares: catalogue texts as the windows show them, and controls found
// by their names.
#include "i18n/Catalogue.h"

#include <QString>
#include <QWidget>

namespace kelvora::testing {

// Catalogue is GetText as a QString, with "%s" and "%d" filled as GetText fills them.
inline QString Catalogue(int languageOffset, int germanId, const QString& s = {},
                         const QString& d = {}) {
    return QString::fromStdString(
        GetText(languageOffset, germanId, s.toStdString(), d.toStdString()));
}

// FindControl is the child of root named name; a missing control ends the test at once.
template <typename Widget = QWidget> Widget* FindControl(const QObject* root, const QString& name) {
    auto* widget = root->findChild<Widget*>(name);
    if (widget == nullptr) {
        qFatal("no control named %s", qPrintable(name));
    }
    return widget;
}

} // namespace kelvora::testing
