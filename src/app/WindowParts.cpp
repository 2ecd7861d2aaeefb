#include "app/WindowParts.h"

#include "app/Theme.h"
#include "app/WindowChrome.h"
#include "controls/ProgressBar.h"
#include "i18n/TextIds.h"

#include <QFrame>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace kelvora::parts {

QLabel* Caption(const QString& name, int germanId, QWidget* parent, const QString& role) {
    auto* label = Tag(new QLabel(parent), name, germanId);
    label->setProperty("role", role);
    label->setWordWrap(true);
    return label;
}

BrowseField Browse(const QString& captionName, int captionId, const QString& editName,
                   const QString& buttonName, QWidget* parent) {
    BrowseField field{};
    field.caption = Caption(captionName, captionId, parent);
    field.edit = Edit(editName, parent, field.caption);
    field.browse = Button(buttonName, kBrowseButtonText, parent);
    field.row = new QHBoxLayout;
    field.row->addWidget(field.edit, 1);
    field.row->addWidget(field.browse);
    return field;
}

QLabel* Logo(int side, QWidget* parent) {
    auto* logo = new QLabel(parent);
    logo->setObjectName(QStringLiteral("ImgLogo"));
    logo->setPixmap(LogoPixmap(side, parent->devicePixelRatioF()));
    return logo;
}

QPushButton* Button(const QString& name, int germanId, QWidget* parent, bool primary) {
    auto* button = Tag(new QPushButton(parent), name, germanId);
    if (primary) {
        button->setProperty("role", QStringLiteral("primary"));
    }
    button->setCursor(Qt::PointingHandCursor);
    return button;
}

QLineEdit* Edit(const QString& name, QWidget* parent, QLabel* label) {
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(name);
    if (label != nullptr) {
        label->setBuddy(edit);
    }
    return edit;
}

void MakeCard(QFrame* card, const QString& name) {
    card->setObjectName(name);
    card->setProperty("role", QStringLiteral("card"));
}

ProgressBar* Bar(const QString& name, int height, QWidget* parent) {
    auto* bar = new ProgressBar(parent);
    bar->setObjectName(name);
    bar->SetSmooth(true);
    bar->SetBorderStyle(ProgressBar::BorderNone);
    bar->SetForeColor(
        OleColorFromRgb(theme::kAccent.red(), theme::kAccent.green(), theme::kAccent.blue()));
    bar->SetBackColor(OleColorFromRgb(0xE4, 0xE8, 0xEE));
    bar->hwnd()->setTextVisible(false);
    bar->setFixedHeight(height);
    return bar;
}

QVBoxLayout* Column(QWidget* holder, int spacing) {
    auto* column = new QVBoxLayout(holder);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(spacing);
    return column;
}

QWidget* Stacked(std::initializer_list<QWidget*> widgets, QWidget* parent) {
    auto* holder = new QWidget(parent);
    auto* grid = new QGridLayout(holder);
    grid->setContentsMargins(0, 0, 0, 0);
    for (QWidget* widget : widgets) {
        QSizePolicy policy = widget->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget->setSizePolicy(policy);
        grid->addWidget(widget, 0, 0);
    }
    return holder;
}

} // namespace kelvora::parts
