#include "app/WindowContext.h"

#include "i18n/Catalogue.h"

namespace kelvora {

QString WindowContext::Text(int germanId, const QString& s) const {
    return QString::fromStdString(GetText(languageOffset, germanId, s.toStdString()));
}

void WindowContext::ShowMessage(int germanId, const QString& s, MessageService::Icon icon) const {
    messages.ShowMessage(germanId, Text(germanId, s), icon, QString());
}

} // namespace kelvora
