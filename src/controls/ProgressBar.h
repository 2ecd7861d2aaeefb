#pragma once

#include "controls/OleColor.h"
#include "controls/PropertyBag.h"

#include <QFrame>
#include <QtGlobal>

class QProgressBar;

namespace kelvora {

// ProgressBar wraps a QProgressBar (objectName "ProgressWindow", reached through hwnd) so that
// forms can drive it with plain properties, keeps it the size of the control and forwards every
// property to it. The range and position are 64-bit: a range that does not fit the inner bar's
// int is shown scaled onto 0..kScaledRange, while Min, Max and Position keep the exact values.
class ProgressBar : public QFrame {
    Q_OBJECT

public:
    enum BarOrientation { Horizontal = 0, Vertical = 1 };
    enum BarBorder { BorderNone = 0, BorderThinBar = 1, BorderSunkenControl = 2 };

    static constexpr int kDefaultOrientation = Horizontal;
    static constexpr qint64 kDefaultMin = 0;
    static constexpr qint64 kDefaultMax = 100;
    static constexpr bool kDefaultSmooth = false;
    static constexpr int kDefaultBorderStyle = BorderThinBar;
    static constexpr OleColor kDefaultBackColor = kColourButtonFace;
    static constexpr OleColor kDefaultForeColor = kColourHighlight;
    static constexpr int kDefaultStep = 1;
    static constexpr int kScaledRange = 1 << 30;

    explicit ProgressBar(QWidget* parent = nullptr);

    // Orientation 0 is horizontal, 1 vertical; other values are ignored. A change builds the
    // inner bar anew and shows the same position on it.
    int Orientation() const { return m_orientation; }
    void SetOrientation(int orientation);

    qint64 Min() const { return m_min; }
    void SetMin(qint64 min);
    qint64 Max() const { return m_max; }
    void SetMax(qint64 max);

    // Smooth draws a continuous bar instead of blocks; a change builds the inner bar anew.
    bool Smooth() const { return m_smooth; }
    void SetSmooth(bool smooth);

    // BorderStyle 0 draws no edge, 1 a thin edge around the bar, 2 a sunken edge around the
    // control; other values are ignored.
    int BorderStyle() const { return m_borderStyle; }
    void SetBorderStyle(int style);

    OleColor BackColor() const { return m_backColor; }
    void SetBackColor(OleColor colour);
    OleColor ForeColor() const { return m_foreColor; }
    void SetForeColor(OleColor colour);

    // Position is kept within Min..Max, as the bar shows it; it is not persisted.
    qint64 Position() const { return m_position; }
    void SetPosition(qint64 position);

    int Step() const { return m_step; }
    void SetStep(int step);
    // StepIt advances the position by Step; past Max it starts again at Min (below Min, at Max).
    void StepIt();

    // hwnd is the inner progress bar; it is replaced when Orientation or Smooth changes.
    QProgressBar* hwnd() const { return m_bar; }

    // ScaledValue maps value within min..max onto the inner bar's int range: unchanged when
    // both ends fit an int, else proportionally onto 0..kScaledRange.
    static int ScaledValue(qint64 value, qint64 min, qint64 max);

    void WriteProperties(PropertyBag& bag) const;
    void ReadProperties(const PropertyBag& bag);

    QSize sizeHint() const override;

signals:
    // PropertyChanged notes that the persisted property name has a new value.
    void PropertyChanged(const QString& name);

protected:
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void CreateBar();
    void ApplyRange();
    void ApplyLook();
    void ApplyBorder();

    int m_orientation = kDefaultOrientation;
    qint64 m_min = kDefaultMin;
    qint64 m_max = kDefaultMax;
    bool m_smooth = kDefaultSmooth;
    int m_borderStyle = kDefaultBorderStyle;
    OleColor m_backColor = kDefaultBackColor;
    OleColor m_foreColor = kDefaultForeColor;
    qint64 m_position = 0;
    int m_step = kDefaultStep;
    QProgressBar* m_bar = nullptr;
};

} // namespace kelvora
