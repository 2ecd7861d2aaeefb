#pragma once

#include <QString>
#include <initializer_list>

class QFrame;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QVBoxLayout;
class QWidget;

namespace kelvora {

class ProgressBar;

// Small builders shared by the parts of the main window. Each names its control and, where it
// has a caption, marks it with the German catalogue id the localiser fills it from.
namespace parts {

// Tag names a control and marks it with the German catalogue id of its text.
template <typename Widget> Widget* Tag(Widget* widget, const QString& name, int germanId) {
    widget->setObjectName(name);
    widget->setProperty("Tag", QStringLiteral("#%1").arg(germanId));
    return widget;
}

QLabel* Caption(const QString& name, int germanId, QWidget* parent,
                const QString& role = QStringLiteral("caption"));
QPushButton* Button(const QString& name, int germanId, QWidget* parent, bool primary = false);
// Edit is a line box; label (when given) is the caption that names it for screen readers.
QLineEdit* Edit(const QString& name, QWidget* parent, QLabel* label = nullptr);
// BrowseField is a captioned line box with a Browse button in a row beside it; the caption
// names the box for screen readers.
struct BrowseField {
    QLabel* caption;
    QLineEdit* edit;
    QPushButton* browse;
    QHBoxLayout* row;
};
BrowseField Browse(const QString& captionName, int captionId, const QString& editName,
                   const QString& buttonName, QWidget* parent);
// Logo is the program's mark (ImgLogo) at side pixels, for a window's header.
QLabel* Logo(int side, QWidget* parent);
// Card frames a part of the window (the passphrase area, the working panel).
void MakeCard(QFrame* card, const QString& name);
ProgressBar* Bar(const QString& name, int height, QWidget* parent);
// Column gives holder a vertical layout without margins.
QVBoxLayout* Column(QWidget* holder, int spacing);
// Stacked places widgets on top of each other in one cell. They keep their room when hidden,
// so the cell is as large as the largest of them whichever is shown.
QWidget* Stacked(std::initializer_list<QWidget*> widgets, QWidget* parent);

} // namespace parts
} // namespace kelvora
