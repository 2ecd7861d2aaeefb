#pragma once

#include <QLabel>
#include <QPixmap>
#include <QRegion>
#include <QWidget>
#include <array>

namespace kelvora {

// ClickLabel is a label that reports a left click (a release inside it), or Enter or Space
// while it has the focus. It takes the press itself, so a click on it does not start moving
// the window.
class ClickLabel : public QLabel {
    Q_OBJECT

public:
    using QLabel::QLabel;

signals:
    void Clicked();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

// FlagImage is a language flag: a small painted flag that reports clicks. Its frame is the
// border MarkLanguageFlag sets on the current language's flag.
class FlagImage : public ClickLabel {
    Q_OBJECT

public:
    enum class Country { Germany, UnitedKingdom, Spain, France };

    FlagImage(Country country, const QString& objectName, QWidget* parent = nullptr);
};

// LanguageFlags makes the four language flags ImageDE, ImageEN, ImageES and ImageFR (German,
// English, Spanish, French, the order of the language offsets) in parent, each with its
// language's name as tool tip and as its name for screen readers.
std::array<FlagImage*, 4> LanguageFlags(QWidget* parent);

// ControlBox is the one picture that stands for the window's minimise and close buttons:
// a release on its left kMinimiseWidth pixels minimises, anywhere else closes.
class ControlBox : public QWidget {
    Q_OBJECT

public:
    static constexpr int kMinimiseWidth = 15;

    explicit ControlBox(QWidget* parent = nullptr);
    QSize sizeHint() const override;

signals:
    void MinimiseRequested();
    void CloseRequested();

protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;

private:
    int m_hoverPart = -1; // 0 minimise, 1 close
};

// LogoPixmap is the program's mark: a padlock on an accent-coloured rounded square.
QPixmap LogoPixmap(int side, qreal devicePixelRatio);

// ShowCaption adds or removes the title bar of a top-level window.
void ShowCaption(QWidget* form, bool show);

// RoundedRegion is the window mask: a rectangle of size with corners rounded by an ellipse
// of rounding x rounding pixels.
QRegion RoundedRegion(QSize size, int rounding);

} // namespace kelvora
