// The custom controls: the tab strip, the progress bar and the shape, each driven headlessly.
#include "controls/LightTab.h"
#include "controls/ProgressBar.h"
#include "controls/ucShape.h"

#include <QImage>
#include <QPointer>
#include <QProgressBar>
#include <QSignalSpy>
#include <QTest>
#include <limits>
#include <tuple>

namespace kelvora {

using namespace Qt::StringLiterals;

namespace {

// How a tab change is asked for: a click on tab `argument` (-1: right of the last tab), the key
// `argument`, or SetNumberOfTabs(argument).
enum Action { Click, Key, Count };

// Everything a form can set, in one comparable list; Position is not persisted and comes last.
QList<qint64> Properties(const ProgressBar& control) {
    return {control.Min(),         control.Max(),       control.Step(),
            control.Orientation(), control.Smooth(),    control.BorderStyle(),
            control.BackColor(),   control.ForeColor(), control.Position()};
}

const QList<qint64> kDefaults{
    0, 100, 1, ProgressBar::Horizontal, 0, ProgressBar::BorderThinBar, 0x8000000F, 0x8000000D, 0};

constexpr OleColor kRed = 0x0000FFu;
constexpr OleColor kGreen = 0x00FF00u;
constexpr OleColor kBlue = 0xFF0000u;
constexpr OleColor kLightGrey = 0xBFB8BFu;

QColor Rgb(OleColor colour) {
    return TranslateOleColor(colour, QPalette());
}

} // namespace

class ControlsTest : public QObject {
    Q_OBJECT

private slots:
    // ---- The tab strip ----

    void SetCaptionPadsAndIgnoresIndexesBeyondTen() {
        LightTab tab;
        tab.SetCaptions(u"Files"_s); // lacks the closing separator
        tab.SetCaption(2, u"Text"_s);
        QCOMPARE(tab.Captions(), u"Files||Text|"_s);
        tab.SetCaption(10, u"Lost"_s);
        QCOMPARE(tab.Captions(), u"Files||Text|"_s);
    }

    // Rows: a boundary of the default strip, an offset in pixels from it, the tab hit there. A
    // shared edge belongs to the tab before it; nothing lies where a hidden fifth tab would be.
    void HitTestWalksTheBoundaries() {
        const LightTab tab;
        const auto boundaries = tab.TabBoundaries();
        const std::array<int, 3> kHits[] = {{0, -1, -1}, {0, 0, 0},  {1, 0, 0},  {1, 1, 1},
                                            {4, 0, 3},   {4, 1, -1}, {4, 30, -1}};
        for (const auto& [boundary, offset, expected] : kHits) {
            QCOMPARE(tab.HitTest(boundaries[static_cast<std::size_t>(boundary)] + offset),
                     expected);
        }
    }

    void ActiveTabStandsTaller() {
        LightTab tab;
        tab.SetActiveTab(1);
        QVERIFY(tab.TabRect(1).top() < tab.TabRect(0).top());
        QCOMPARE(tab.TabRect(1).bottom(), tab.TabRect(0).bottom());
        QCOMPARE(tab.TabRect(0).right(), tab.TabRect(1).left());
        QVERIFY(tab.TabRect(4).isNull());
        QVERIFY(tab.sizeHint().width() > tab.TabRect(3).right());
    }

    // Rows: active tab, action, its argument, active tab after, whether AfterTabChange came. Keys
    // other than Left and Right do nothing; fewer tabs than the active one, or just as many,
    // make the first tab active.
    void ChangesRaiseOneEventOrNone() {
        const std::tuple<int, Action, int, int, bool> kChanges[] = {
            {0, Click, 2, 2, true},
            {2, Click, 2, 2, false},
            {1, Click, -1, 1, false},
            {0, Key, Qt::Key_Right, 1, true},
            {3, Key, Qt::Key_Right, 3, false},
            {2, Key, Qt::Key_Left, 1, true},
            {0, Key, Qt::Key_Left, 0, false},
            {1, Key, Qt::Key_Down, 1, false},
            {3, Count, 2, 0, true},
            {3, Count, 3, 0, true},
            {1, Count, 2, 1, false}};
        for (const auto& [startTab, action, argument, expectedTab, raised] : kChanges) {
            LightTab tab;
            tab.resize(600, tab.sizeHint().height());
            tab.SetActiveTab(startTab);
            const QSignalSpy spy(&tab, &LightTab::AfterTabChange);
            if (action == Click) {
                QTest::mouseClick(&tab, Qt::LeftButton, {},
                                  argument >= 0 ? tab.TabRect(argument).center()
                                                : QPoint(tab.TabRect(3).right() + 10, 10));
            } else if (action == Key) {
                QTest::keyClick(&tab, static_cast<Qt::Key>(argument));
            } else {
                tab.SetNumberOfTabs(argument);
            }
            QCOMPARE(tab.ActiveTab(), expectedTab);
            QCOMPARE(QList<QVariantList>(spy),
                     raised ? QList<QVariantList>{{expectedTab}} : QList<QVariantList>());
        }
    }

    void NumberOfTabsStaysWithinOneToTen() {
        LightTab tab;
        tab.SetNumberOfTabs(11);
        QCOMPARE(tab.NumberOfTabs(), LightTab::kMaxTabs);
        QCOMPARE(tab.HitTest(tab.TabRect(9).center().x()), 9);
        tab.SetNumberOfTabs(0);
        QCOMPARE(tab.NumberOfTabs(), 1);
        tab.SetActiveTab(1);
        QCOMPARE(tab.ActiveTab(), 0);
    }

    void OnlyChangedPropertiesAreStored() {
        LightTab saved;
        PropertyBag bag;
        saved.WriteProperties(bag);
        QVERIFY(bag.Values().isEmpty());
        saved.SetNumberOfTabs(2);
        saved.WriteProperties(bag);
        QCOMPARE(bag.Values().keys(), QStringList{u"NumberOfTabs"_s});

        saved.SetCaption(1, u"Decrypt"_s);
        saved.SetActiveTab(1);
        saved.WriteProperties(bag);
        LightTab loaded;
        loaded.ReadProperties(bag);
        QCOMPARE(loaded.NumberOfTabs(), 2);
        QCOMPARE(loaded.ActiveTab(), 1);
        QCOMPARE(loaded.Captions(), saved.Captions());
    }

    // ---- The progress bar ----

    void PersistenceKeepsOnlyChangedValues() {
        ProgressBar saved;
        QCOMPARE(Properties(saved), kDefaults);
        PropertyBag bag;
        saved.WriteProperties(bag);
        QVERIFY(bag.Values().isEmpty());

        saved.SetOrientation(ProgressBar::Vertical);
        saved.SetMax(5'000'000'000);
        saved.SetMin(-5);
        saved.SetSmooth(true);
        saved.SetBorderStyle(ProgressBar::BorderSunkenControl);
        saved.SetBackColor(0x00FFFFFFu);
        saved.SetForeColor(0x000000FFu);
        saved.SetStep(10);
        saved.SetPosition(3);
        saved.WriteProperties(bag);
        QCOMPARE(bag.Values().size(), kDefaults.size() - 1);

        ProgressBar loaded;
        loaded.ReadProperties(bag);
        QCOMPARE(Properties(loaded).first(8), Properties(saved).first(8));
        // A bag without values brings every default back, the bar's border included (how the
        // bar follows its orientation and range is the rebuilding and range tests').
        loaded.ReadProperties(PropertyBag());
        QCOMPARE(Properties(loaded), kDefaults);
        QCOMPARE(loaded.findChild<QProgressBar*>(u"ProgressWindow"_s), loaded.hwnd());
        QCOMPARE(loaded.frameShape(), QFrame::NoFrame);
    }

    // Orientation and Smooth build the inner bar anew with the same position; every bar fills
    // the control's inner area, also inside a sunken edge; an unknown border style is ignored.
    void RebuildingTheBarKeepsThePosition() {
        ProgressBar control;
        control.resize(200, 20);
        control.SetMax(300);
        control.SetPosition(142);
        for (const bool vertical : {false, true}) {
            const QPointer<QProgressBar> oldBar = control.hwnd();
            vertical ? control.SetOrientation(ProgressBar::Vertical) : control.SetSmooth(true);
            QVERIFY(oldBar.isNull());
            QCOMPARE(control.hwnd()->value(), 142);
            QCOMPARE(control.hwnd()->maximum(), 300);
            QCOMPARE(control.hwnd()->orientation(), vertical ? Qt::Vertical : Qt::Horizontal);
            QCOMPARE(control.hwnd()->geometry(), control.contentsRect());
        }
        control.SetBorderStyle(ProgressBar::BorderSunkenControl);
        QCOMPARE(control.frameShadow(), QFrame::Sunken);
        QVERIFY(control.frameWidth() > 0);
        QCOMPARE(control.hwnd()->geometry(), control.contentsRect());
        control.SetBorderStyle(5);
        QCOMPARE(control.BorderStyle(), int(ProgressBar::BorderSunkenControl));
    }

    void PositionStaysWithinTheRange() {
        ProgressBar control;
        control.SetPosition(80);
        control.SetMax(10); // a lower Max pulls the position in
        QCOMPARE(control.Position(), qint64{10});
        control.SetStep(2);
        control.SetPosition(8);
        // StepIt reaches the end exactly, then starts again at the start rather than wrapping.
        for (const qint64 expected : {10, 0}) {
            control.StepIt();
            QCOMPARE(control.Position(), expected);
        }
        control.SetStep(-3);
        control.StepIt();
        QCOMPARE(control.Position(), qint64{10});
    }

    // Rows: position, min, max, the inner bar's value. An int range passes unchanged; a wider
    // one, even the full 64-bit span, is scaled onto 0..kScaledRange.
    void WideRangesAreScaled() {
        constexpr qint64 kTenGiga = 10'000'000'000;
        constexpr qint64 kLowest = std::numeric_limits<qint64>::min();
        for (const auto& [value, min, max, expected] :
             {std::tuple<qint64, qint64, qint64, int>{42, -7, 100, 42},
              {-3, 0, 100, 0},
              {kTenGiga / 2, 0, kTenGiga, ProgressBar::kScaledRange / 2},
              {2 * kTenGiga, 0, kTenGiga, ProgressBar::kScaledRange},
              {0, kLowest, std::numeric_limits<qint64>::max(), ProgressBar::kScaledRange / 2}}) {
            ProgressBar control;
            control.SetMax(max);
            control.SetMin(min);
            control.SetPosition(value);
            QCOMPARE(control.hwnd()->value(), expected);
        }
    }

    // Red is the low byte, blue the high one; a system colour comes from the palette; colour 25,
    // one beyond the table and the palette-index form are no colour.
    void ColoursTranslate() {
        const QPalette palette;
        for (const auto& [stored, expected] : {std::pair{0x0000FFu, QColor(255, 0, 0)},
                                               {0xFF0000u, QColor(0, 0, 255)},
                                               {0x8000000Fu, palette.color(QPalette::Button)},
                                               {0x80000019u, QColor()},
                                               {0x800000FFu, QColor()},
                                               {0x01000005u, QColor()}}) {
            QCOMPARE(TranslateOleColor(stored, palette), expected);
        }
    }

    // ---- The shape ----

    // Blue is the outline that goes unsaved, light grey what an absent value reads back as; the
    // other properties come back as they were saved.
    void PropertiesSurviveSaveAndLoad() {
        QCOMPARE(ucShape().ForeColor(), kLightGrey);
        for (const OleColor outline : {kBlue, kLightGrey}) {
            ucShape saved;
            saved.SetForeColor(outline);
            PropertyBag bag;
            saved.WriteProperties(bag);
            QCOMPARE(bag.Values().keys(),
                     outline == kBlue ? QStringList() : QStringList{u"ForeColor"_s});
            ucShape loaded;
            loaded.SetForeColor(kRed);
            loaded.ReadProperties(bag);
            QCOMPARE(loaded.ForeColor(), kLightGrey);
        }
        ucShape saved;
        QFont font = saved.Font();
        font.setPointSize(font.pointSize() + 5);
        saved.SetFont(font);
        saved.SetFillColor(kGreen);
        saved.SetBackColor(kRed);
        saved.SetRounding(12);
        PropertyBag bag;
        saved.WriteProperties(bag);
        ucShape loaded;
        loaded.ReadProperties(bag);
        QCOMPARE(loaded.FillColor(), kGreen);
        QCOMPARE(loaded.BackColor(), kRed);
        QCOMPARE(loaded.Rounding(), 12);
        QCOMPARE(loaded.Font(), font);
    }

    // A shown control whose form lowered the minimum size snaps back as well.
    void NeverSmallerThan32Pixels() {
        QWidget form;
        form.resize(200, 200);
        auto* shown = new ucShape(&form);
        shown->setMinimumSize(0, 0);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        ucShape hidden;
        for (const auto& [requested, expected] : {std::pair{QSize(10, 50), QSize(32, 50)},
                                                  {QSize(50, 31), QSize(50, 32)},
                                                  {QSize(32, 32), QSize(32, 32)}}) {
            for (QWidget* shape : {static_cast<QWidget*>(&hidden), static_cast<QWidget*>(shown)}) {
                shape->resize(requested);
                QCOMPARE(shape->size(), expected);
            }
        }
    }

    // Rounding 0 is a plain rectangle; rounded corners show the back colour.
    void PaintsOutlineFillAndCorners() {
        for (const auto& [rounding, cornerColour] : {std::pair{0, kBlue}, {24, kRed}}) {
            ucShape shape;
            shape.resize(80, 60);
            shape.SetForeColor(kBlue);
            shape.SetFillColor(kGreen);
            shape.SetBackColor(kRed);
            shape.SetRounding(rounding);
            const QImage image = shape.grab().toImage();
            QCOMPARE(image.size(), QSize(80, 60));
            for (const QPoint corner :
                 {QPoint(0, 0), QPoint(79, 0), QPoint(0, 59), QPoint(79, 59)}) {
                QCOMPARE(image.pixelColor(corner), Rgb(cornerColour));
            }
            for (const QPoint edge :
                 {QPoint(40, 0), QPoint(0, 30), QPoint(79, 30), QPoint(40, 59)}) {
                QCOMPARE(image.pixelColor(edge), Rgb(kBlue));
            }
            QCOMPARE(image.pixelColor(40, 30), Rgb(kGreen));
            QCOMPARE(image.pixelColor(1, 30), Rgb(kGreen));
        }
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::ControlsTest)
#include "ControlsTest.moc"
