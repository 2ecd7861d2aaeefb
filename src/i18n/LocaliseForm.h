#pragma once

class QWidget;

namespace kelvora {

// LocaliseForm re-labels a window and all its child widgets from their catalogue marks in the
// language languageOffset. A widget whose dynamic property "Tag" is "#" and a German id takes
// that text as its caption (label, button, check box, option button, group box title) or as
// its text (line and text boxes); the mark stays, so the window can be re-labelled any number
// of times. A tooltip that begins with "#" is replaced by its text once and is no mark after
// that. The window's own "Tag" sets its title, and the first "&" of the title is removed. A
// mark whose id the language lacks, or that is no number, leaves its widget unchanged.
void LocaliseForm(QWidget* form, int languageOffset);

// MarkLanguageFlag draws a single-line border round the flag of the language languageOffset
// (the child widgets ImageDE, ImageEN, ImageES, ImageFR) and removes it from the others; an
// offset that is no language marks none. A flag that is a QFrame (a QLabel, say) shows the
// border as its frame; every flag also gets the dynamic property "BorderStyle" (1 or 0) for
// style sheets.
void MarkLanguageFlag(QWidget* form, int languageOffset);

} // namespace kelvora
