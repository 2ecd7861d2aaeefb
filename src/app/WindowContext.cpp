#include "app/WindowContext.h"

#include "i18n/Catalogue.h"

namespace kelvora {

QString WindowContext::Text(int germanId, const QString& s, const QString& d) const {
    return QString::fromStdString(
        GetText(languageOffset, germanId, s.toStdString(), d.toStdString()));
}

QString WindowContext::Filter(int germanId) const {
    const QString text = Text(germanId);
    QString label = text.section(u'|', 0, 0);
    QString pattern = text.section(u'|', 1);
    if (const qsizetype open = label.lastIndexOf(u'('); open > 0) {
        label = label.left(open).trimmed();
    }
    // "*.*" means every file where names need not hold a dot.
    pattern.replace(QStringLiteral("*.*"), QStringLiteral("*"));
    return pattern.isEmpty() ? label : QStringLiteral("%1 (%2)").arg(label, pattern);
}

QLocale WindowContext::Locale() const {
    switch (languageOffset) {
    case kGerman:
        return QLocale(QLocale::German, QLocale::Germany);
    case kSpanish:
        return QLocale(QLocale::Spanish, QLocale::Spain);
    case kFrench:
        return QLocale(QLocale::French, QLocale::France);
    default:
        return QLocale(QLocale::English, QLocale::UnitedKingdom);
    }
}

void WindowContext::ShowMessage(int germanId, const QString& s, MessageService::Icon icon) const {
    messages.ShowMessage(germanId, Text(germanId, s), icon, QString());
}

} // namespace kelvora
