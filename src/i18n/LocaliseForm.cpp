#include "i18n/LocaliseForm.h"

#include "i18n/Catalogue.h"

#include <QAbstractButton>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStyle>
#include <QTextEdit>
#include <QWidget>
#include <array>
#include <optional>

namespace kelvora {

namespace {

constexpr char kMarkProperty[] = "Tag";
constexpr char kBorderProperty[] = "BorderStyle";

// CatalogueTextOfMark returns the text a mark such as "#161" names, or nothing when the value
// is no mark or the language lacks the id.
std::optional<QString> CatalogueTextOfMark(const QString& mark, int languageOffset) {
    if (!mark.startsWith(QLatin1Char('#'))) {
        return std::nullopt;
    }
    bool isNumber = false;
    const int germanId = mark.mid(1).trimmed().toInt(&isNumber);
    if (!isNumber) {
        return std::nullopt;
    }
    const std::optional<std::string_view> text = FindText(languageOffset, germanId);
    if (!text) {
        return std::nullopt;
    }
    return QString::fromUtf8(text->data(), static_cast<qsizetype>(text->size()));
}

std::optional<QString> TextOfTag(const QWidget* widget, int languageOffset) {
    return CatalogueTextOfMark(widget->property(kMarkProperty).toString(), languageOffset);
}

// SetShownText puts a text where the widget shows it: the caption of a captioned control,
// the contents of a text box, or else a "text" property such as custom controls offer.
void SetShownText(QWidget* widget, const QString& text) {
    if (auto* group = qobject_cast<QGroupBox*>(widget)) {
        group->setTitle(text);
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        button->setText(text);
    } else if (auto* label = qobject_cast<QLabel*>(widget)) {
        label->setText(text);
    } else if (auto* line = qobject_cast<QLineEdit*>(widget)) {
        line->setText(text);
    } else if (auto* rich = qobject_cast<QTextEdit*>(widget)) {
        rich->setPlainText(text);
    } else if (auto* plain = qobject_cast<QPlainTextEdit*>(widget)) {
        plain->setPlainText(text);
    } else if (widget->metaObject()->indexOfProperty("text") >= 0) {
        widget->setProperty("text", text);
    }
}

void LocaliseWindowTitle(QWidget* form, int languageOffset) {
    if (const std::optional<QString> title = TextOfTag(form, languageOffset)) {
        form->setWindowTitle(*title);
    }
    QString title = form->windowTitle();
    if (const qsizetype ampersand = title.indexOf(QLatin1Char('&')); ampersand >= 0) {
        form->setWindowTitle(title.remove(ampersand, 1));
    }
}

void LocaliseControl(QWidget* control, int languageOffset) {
    if (const std::optional<QString> text = TextOfTag(control, languageOffset)) {
        SetShownText(control, *text);
    }
    if (const std::optional<QString> tip =
            CatalogueTextOfMark(control->toolTip(), languageOffset)) {
        control->setToolTip(*tip);
    }
}

void SetFlagBorder(QWidget* flag, bool marked) {
    flag->setProperty(kBorderProperty, marked ? 1 : 0);
    if (auto* frame = qobject_cast<QFrame*>(flag)) {
        frame->setFrameStyle(marked ? (QFrame::Box | QFrame::Plain) : QFrame::NoFrame);
        frame->setLineWidth(1);
    }
    // A style sheet that selects on the property only sees the change after a re-polish.
    flag->style()->unpolish(flag);
    flag->style()->polish(flag);
    flag->update();
}

} // namespace

void LocaliseForm(QWidget* form, int languageOffset) {
    LocaliseWindowTitle(form, languageOffset);
    for (QWidget* control : form->findChildren<QWidget*>()) {
        LocaliseControl(control, languageOffset);
    }
}

void MarkLanguageFlag(QWidget* form, int languageOffset) {
    struct Flag {
        const char* name;
        int languageOffset;
    };
    constexpr std::array kFlags{Flag{"ImageDE", kGerman}, Flag{"ImageEN", kEnglish},
                                Flag{"ImageES", kSpanish}, Flag{"ImageFR", kFrench}};
    for (const Flag& flag : kFlags) {
        if (auto* widget = form->findChild<QWidget*>(QString::fromLatin1(flag.name))) {
            SetFlagBorder(widget, flag.languageOffset == languageOffset);
        }
    }
}

} // namespace kelvora
