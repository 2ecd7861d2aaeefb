#pragma once

#include "controls/PropertyBag.h"

#include <QString>
#include <QWidget>
#include <array>

namespace kelvora {

// LightTab is a flat tab strip drawn with lines: up to ten tabs whose captions live in one
// "|"-separated string. It follows the mouse and the Left/Right arrow keys and reports every
// change of the active tab through AfterTabChange; the form shows the page that belongs to it.
//
// The control itself is the drawing surface that takes the mouse and keyboard (the strip's
// "TabStrip"); the tab under the mouse is highlighted while the pointer rests on it
// (HighlightedTab). Geometry comes from the widget's font, so TabRect and HitTest are what
// paintEvent draws and what a click hits.
class LightTab : public QWidget {
    Q_OBJECT

public:
    static constexpr int kMaxTabs = 10;
    static constexpr int kDefaultNumberOfTabs = 4;
    static inline const QString kDefaultCaptions =
        QStringLiteral("Tab0|Tab1|Tab2|Tab3|Tab4|Tab5|Tab6|Tab7|Tab8|Tab9|");

    explicit LightTab(QWidget* parent = nullptr);

    // Caption returns the caption of tab index, empty when the string holds no such piece.
    QString Caption(int index) const;
    // SetCaption replaces the caption of tab index (0 to 9); other indexes are ignored.
    void SetCaption(int index, const QString& caption);
    // Captions is the whole caption string, each caption followed by "|".
    const QString& Captions() const { return m_captions; }
    void SetCaptions(const QString& captions);

    int NumberOfTabs() const { return m_numberOfTabs; }
    // SetNumberOfTabs shows count tabs, kept within 1 to 10. When the active tab would no longer
    // be shown, the first tab becomes active and AfterTabChange(0) is raised.
    void SetNumberOfTabs(int count);

    int ActiveTab() const { return m_activeTab; }
    // SetActiveTab selects tab index and raises AfterTabChange. An index outside the shown tabs,
    // or the tab already active, changes nothing and raises no event.
    void SetActiveTab(int index);

    // HighlightedTab is the tab under the mouse pointer, or -1.
    int HighlightedTab() const { return m_highlightedTab; }

    // TabRect is the outline of tab index in widget coordinates (the active tab stands taller),
    // an empty rectangle for a tab that is not shown.
    QRect TabRect(int index) const;
    // TabBoundaries holds the left x of each shown tab, then the right end of the last tab.
    std::array<int, kMaxTabs + 1> TabBoundaries() const;
    // HitTest returns the tab whose span holds x, or -1 left of the first tab and right of the
    // last one.
    int HitTest(int x) const;

    void WriteProperties(PropertyBag& bag) const;
    void ReadProperties(const PropertyBag& bag);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void AfterTabChange(int newTab);
    // PropertyChanged notes that the persisted property name has a new value.
    void PropertyChanged(const QString& name);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    int TabWidth(int index) const;
    int TabHeight() const;
    void SetHighlightedTab(int index);

    QString m_captions = kDefaultCaptions;
    int m_numberOfTabs = kDefaultNumberOfTabs;
    int m_activeTab = 0;
    int m_highlightedTab = -1;
};

} // namespace kelvora
