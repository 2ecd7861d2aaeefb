#pragma once

#include "controls/OleColor.h"
#include "controls/PropertyBag.h"

#include <QFont>
#include <QWidget>

namespace kelvora {

// ucShape paints a rectangle with rounded corners over its whole area: an outline in ForeColor
// filled with FillColor, BackColor showing around the corners. It is never smaller than
// kMinSide pixels in either direction. Its Font is kept and persisted; the shape draws no text.
class ucShape : public QWidget {
    Q_OBJECT

public:
    static constexpr int kMinSide = 32;
    // A control saved with the blue outline is stored without ForeColor and reads back light
    // grey: the two defaults differ on purpose and must stay paired like this.
    static constexpr OleColor kForeColorReadDefault = 0xBFB8BFu;
    static constexpr OleColor kForeColorWriteDefault = 0xFF0000u;
    static constexpr OleColor kDefaultFillColor = kColourWindow;
    static constexpr OleColor kDefaultBackColor = kColourButtonFace;
    static constexpr int kDefaultRounding = 0;

    explicit ucShape(QWidget* parent = nullptr);

    OleColor ForeColor() const { return m_foreColor; }
    void SetForeColor(OleColor colour);
    OleColor FillColor() const { return m_fillColor; }
    void SetFillColor(OleColor colour);
    OleColor BackColor() const { return m_backColor; }
    void SetBackColor(OleColor colour);
    QFont Font() const { return font(); }
    void SetFont(const QFont& font);

    // Rounding is the width and height of the ellipse that rounds each corner, in pixels;
    // 0 gives square corners. Negative values count as 0.
    int Rounding() const { return m_rounding; }
    void SetRounding(int rounding);

    // SnappedSize is size grown to at least kMinSide in each direction.
    static QSize SnappedSize(QSize size);

    void WriteProperties(PropertyBag& bag) const;
    void ReadProperties(const PropertyBag& bag);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    // PropertyChanged notes that the persisted property name has a new value.
    void PropertyChanged(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void SetColour(OleColor& member, OleColor colour, const QString& name);

    OleColor m_foreColor = kForeColorReadDefault;
    OleColor m_fillColor = kDefaultFillColor;
    OleColor m_backColor = kDefaultBackColor;
    int m_rounding = kDefaultRounding;
    bool m_painting = false;
};

} // namespace kelvora
