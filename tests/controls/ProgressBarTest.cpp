#include "controls/ProgressBar.h"

#include <QPointer>
#include <QProgressBar>
#include <QTest>
#include <limits>

namespace kelvora {

namespace {

// Everything a form can set, in one comparable list; Position is not persisted and comes last.
QList<qint64> Properties(const ProgressBar& control) {
    return {control.Min(),         control.Max(),       control.Step(),
            control.Orientation(), control.Smooth(),    control.BorderStyle(),
            control.BackColor(),   control.ForeColor(), control.Position()};
}

const QList<qint64> kDefaults{
    0, 100, 1, ProgressBar::Horizontal, 0, ProgressBar::BorderThinBar, 0x8000000F, 0x8000000D, 0};

} // namespace

class ProgressBarTest : public QObject {
    Q_OBJECT

private slots:
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
        // A bag without values brings every default back, the bar included.
        loaded.ReadProperties(PropertyBag());
        QCOMPARE(Properties(loaded), kDefaults);
        const QProgressBar* bar = loaded.hwnd();
        QCOMPARE(loaded.findChild<QProgressBar*>(QStringLiteral("ProgressWindow")), bar);
        QCOMPARE(bar->orientation(), Qt::Horizontal);
        QCOMPARE(bar->maximum(), 100);
        QCOMPARE(loaded.frameShape(), QFrame::NoFrame);
    }

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
        QCOMPARE(control.hwnd()->value(), 10);
    }

    void WideRangesAreScaled_data() {
        QTest::addColumn<qint64>("value");
        QTest::addColumn<qint64>("min");
        QTest::addColumn<qint64>("max");
        QTest::addColumn<int>("expected");

        constexpr qint64 kTenGiga = 10'000'000'000;
        QTest::newRow("int range passes unchanged")
            << qint64{42} << qint64{-7} << qint64{100} << 42;
        QTest::newRow("below the start") << qint64{-3} << qint64{0} << qint64{100} << 0;
        QTest::newRow("wide, half")
            << kTenGiga / 2 << qint64{0} << kTenGiga << ProgressBar::kScaledRange / 2;
        QTest::newRow("wide, beyond the end")
            << 2 * kTenGiga << qint64{0} << kTenGiga << ProgressBar::kScaledRange;
        QTest::newRow("full 64-bit span, middle")
            << qint64{0} << std::numeric_limits<qint64>::min() << std::numeric_limits<qint64>::max()
            << ProgressBar::kScaledRange / 2;
    }

    void WideRangesAreScaled() {
        QFETCH(qint64, value);
        QFETCH(qint64, min);
        QFETCH(qint64, max);
        QFETCH(int, expected);

        ProgressBar control;
        control.SetMax(max);
        control.SetMin(min);
        control.SetPosition(value);
        QCOMPARE(control.hwnd()->value(), expected);
    }

    void SunkenEdgeFramesTheControl() {
        ProgressBar control;
        control.resize(200, 24);
        control.SetBorderStyle(ProgressBar::BorderSunkenControl);
        QCOMPARE(control.frameShadow(), QFrame::Sunken);
        QVERIFY(control.frameWidth() > 0);
        QCOMPARE(control.hwnd()->geometry(), control.contentsRect());
        control.SetBorderStyle(5);
        QCOMPARE(control.BorderStyle(), int(ProgressBar::BorderSunkenControl));
    }

    void ColoursTranslate_data() {
        QTest::addColumn<uint>("stored");
        QTest::addColumn<QColor>("expected");

        const QPalette palette;
        QTest::newRow("red is the low byte") << 0x0000FFu << QColor(255, 0, 0);
        QTest::newRow("blue is the high byte") << 0xFF0000u << QColor(0, 0, 255);
        QTest::newRow("button face") << 0x8000000Fu << palette.color(QPalette::Button);
        QTest::newRow("undefined system colour 25") << 0x80000019u << QColor();
        QTest::newRow("system colour beyond the table") << 0x800000FFu << QColor();
        QTest::newRow("palette index form") << 0x01000005u << QColor();
    }

    void ColoursTranslate() {
        QFETCH(uint, stored);
        QFETCH(QColor, expected);
        QCOMPARE(TranslateOleColor(stored, QPalette()), expected);
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::ProgressBarTest)
#include "ProgressBarTest.moc"
