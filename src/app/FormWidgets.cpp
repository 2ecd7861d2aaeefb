#include "app/FormWidgets.h"

#include <QLabel>
#include <QPushButton>

namespace kelvora {

QWidget* MarkText(QWidget* widget, const QString& name, int germanId) {
    widget->setObjectName(name);
    widget->setProperty("Tag", QStringLiteral("#%1").arg(germanId));
    return widget;
}

QLabel* CaptionLabel(const QString& name, int germanId, QWidget* parent, const QString& role) {
    auto* label = new QLabel(parent);
    MarkText(label, name, germanId);
    label->setProperty("role", role);
    label->setWordWrap(true);
    return label;
}

QPushButton* CommandButton(const QString& name, int germanId, QWidget* parent, bool primary) {
    auto* button = new QPushButton(parent);
    MarkText(button, name, germanId);
    if (primary) {
        button->setProperty("role", QStringLiteral("primary"));
    }
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

} // namespace kelvora
