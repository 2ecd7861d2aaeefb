#pragma once

#include <QString>

class QLabel;
class QPushButton;
class QWidget;

namespace kelvora {

// Small builders for the controls of the program's windows, so that every window names its
// controls and marks their catalogue texts the same way (LocaliseForm reads the marks).

// MarkText names a control and marks it with the German catalogue id of its text.
QWidget* MarkText(QWidget* widget, const QString& name, int germanId);

// CaptionLabel is a word-wrapped label for a catalogue text, styled by role ("caption",
// "hint", "prompt", "title", "link").
QLabel* CaptionLabel(const QString& name, int germanId, QWidget* parent,
                     const QString& role = QStringLiteral("caption"));

// CommandButton is a push button for a catalogue text; a primary one carries the accent.
QPushButton* CommandButton(const QString& name, int germanId, QWidget* parent,
                           bool primary = false);

} // namespace kelvora
