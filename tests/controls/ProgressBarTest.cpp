#include "controls/ProgressBar.h"

#include <QPointer>
#include <QProgressBar>
#include <QTest>
#include <algorithm>
#include <limits>

namespace kelvora {

class ProgressBarTest : public QObject {
    Q_OBJECT

private slots:
    void NewControlRunsFromZeroToHundredInBlocks();
    void LoadingNothingRestoresTheDefaults();
    void RebuildingTheBarKeepsThePosition_data();
    void RebuildingTheBarKeepsThePosition();
    void OneChangedPropertyIsStoredAlone_data();
    void OneChangedPropertyIsStoredAlone();
    void PositionStaysWithinTheRange();
    void StepItStartsAgainPastTheEnd_data();
    void StepItStartsAgainPastTheEnd();
    void WideRangesAreScaled_data();
    void WideRangesAreScaled();
    void SunkenEdgeFramesTheControl();
    void ColoursTranslate_data();
    void ColoursTranslate();
};

void ProgressBarTest::NewControlRunsFromZeroToHundredInBlocks() {
    const ProgressBar control;
    QCOMPARE(control.Min(), qint64{0});
    QCOMPARE(control.Max(), qint64{100});
    QCOMPARE(control.Step(), 1);
    QCOMPARE(control.Position(), qint64{0});
    QCOMPARE(control.Orientation(), int(ProgressBar::Horizontal));
    QCOMPARE(control.Smooth(), false);
    QCOMPARE(control.BorderStyle(), int(ProgressBar::BorderThinBar));
    QCOMPARE(control.BackColor(), 0x8000000Fu);
    QCOMPARE(control.ForeColor(), 0x8000000Du);

    const QProgressBar* bar = control.hwnd();
    QVERIFY(bar != nullptr);
    QCOMPARE(bar->objectName(), QStringLiteral("ProgressWindow"));
    QCOMPARE(control.findChild<QProgressBar*>(QStringLiteral("ProgressWindow")), bar);
    QCOMPARE(bar->orientation(), Qt::Horizontal);
    QCOMPARE(bar->minimum(), 0);
    QCOMPARE(bar->maximum(), 100);
    QCOMPARE(control.frameShape(), QFrame::NoFrame);
}

void ProgressBarTest::LoadingNothingRestoresTheDefaults() {
    ProgressBar control;
    control.SetOrientation(ProgressBar::Vertical);
    control.SetMax(500);
    control.SetMin(10);
    control.SetSmooth(true);
    control.SetBorderStyle(ProgressBar::BorderNone);
    control.SetStep(7);
    control.SetForeColor(0x00FF00u);

    control.ReadProperties(PropertyBag());

    QCOMPARE(control.Orientation(), int(ProgressBar::Horizontal));
    QCOMPARE(control.Min(), qint64{0});
    QCOMPARE(control.Max(), qint64{100});
    QCOMPARE(control.Smooth(), false);
    QCOMPARE(control.BorderStyle(), int(ProgressBar::BorderThinBar));
    QCOMPARE(control.Step(), 1);
    QCOMPARE(control.ForeColor(), ProgressBar::kDefaultForeColor);
    QCOMPARE(control.hwnd()->orientation(), Qt::Horizontal);
}

void ProgressBarTest::RebuildingTheBarKeepsThePosition_data() {
    QTest::addColumn<bool>("smooth");
    QTest::addColumn<int>("orientation");

    QTest::newRow("smooth") << true << int(ProgressBar::Horizontal);
    QTest::newRow("vertical") << false << int(ProgressBar::Vertical);
}

void ProgressBarTest::RebuildingTheBarKeepsThePosition() {
    QFETCH(bool, smooth);
    QFETCH(int, orientation);

    ProgressBar control;
    control.resize(200, 20);
    control.SetMax(300);
    control.SetPosition(142);
    const QPointer<QProgressBar> oldBar = control.hwnd();

    control.SetSmooth(smooth);
    control.SetOrientation(orientation);

    QVERIFY(oldBar.isNull());
    const QProgressBar* bar = control.hwnd();
    QCOMPARE(bar->value(), 142);
    QCOMPARE(bar->maximum(), 300);
    QCOMPARE(bar->orientation(),
             orientation == ProgressBar::Vertical ? Qt::Vertical : Qt::Horizontal);
    QCOMPARE(bar->geometry(), control.contentsRect());
    QCOMPARE(control.Position(), qint64{142});
}

void ProgressBarTest::OneChangedPropertyIsStoredAlone_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("Orientation") << "Orientation" << QVariant(1);
    QTest::newRow("Min") << "Min" << QVariant(qint64{-5});
    QTest::newRow("Max") << "Max" << QVariant(qint64{5'000'000'000});
    QTest::newRow("Smooth") << "Smooth" << QVariant(true);
    QTest::newRow("BorderStyle") << "BorderStyle" << QVariant(2);
    QTest::newRow("BackColor") << "BackColor" << QVariant(0x00FFFFFFu);
    QTest::newRow("ForeColor") << "ForeColor" << QVariant(0x000000FFu);
    QTest::newRow("Step") << "Step" << QVariant(10);
}

void ProgressBarTest::OneChangedPropertyIsStoredAlone() {
    QFETCH(QString, key);
    QFETCH(QVariant, value);

    PropertyBag given;
    given.WriteProperty(key, value, QVariant());
    ProgressBar saved;
    saved.ReadProperties(given);
    saved.SetPosition(3);

    PropertyBag bag;
    saved.WriteProperties(bag);
    QCOMPARE(bag.Values().keys(), QStringList{key});
    QCOMPARE(bag.ReadProperty(key, QVariant()), value);

    PropertyBag again;
    ProgressBar loaded;
    loaded.ReadProperties(bag);
    loaded.WriteProperties(again);
    QCOMPARE(again.Values(), bag.Values());
}

void ProgressBarTest::PositionStaysWithinTheRange() {
    ProgressBar control;
    control.SetPosition(150);
    QCOMPARE(control.Position(), qint64{100});
    control.SetMax(40);
    QCOMPARE(control.Position(), qint64{40});
    control.SetPosition(-3);
    QCOMPARE(control.Position(), qint64{0});
    QCOMPARE(control.hwnd()->value(), 0);
}

void ProgressBarTest::StepItStartsAgainPastTheEnd_data() {
    QTest::addColumn<int>("step");
    QTest::addColumn<qint64>("start");
    QTest::addColumn<qint64>("expected");

    QTest::newRow("one step") << 1 << qint64{3} << qint64{4};
    QTest::newRow("up to the end") << 2 << qint64{8} << qint64{10};
    QTest::newRow("past the end") << 2 << qint64{9} << qint64{0};
    QTest::newRow("backwards past the start") << -3 << qint64{2} << qint64{10};
}

void ProgressBarTest::StepItStartsAgainPastTheEnd() {
    QFETCH(int, step);
    QFETCH(qint64, start);
    QFETCH(qint64, expected);

    ProgressBar control;
    control.SetMax(10);
    control.SetStep(step);
    control.SetPosition(start);
    control.StepIt();
    QCOMPARE(control.Position(), expected);
    QCOMPARE(control.hwnd()->value(), int(expected));
}

void ProgressBarTest::WideRangesAreScaled_data() {
    QTest::addColumn<qint64>("value");
    QTest::addColumn<qint64>("min");
    QTest::addColumn<qint64>("max");
    QTest::addColumn<int>("expected");

    constexpr qint64 kTenGiga = 10'000'000'000;
    QTest::newRow("int range passes unchanged") << qint64{42} << qint64{-7} << qint64{100} << 42;
    QTest::newRow("wide, start") << qint64{0} << qint64{0} << kTenGiga << 0;
    QTest::newRow("wide, half") << kTenGiga / 2 << qint64{0} << kTenGiga
                                << ProgressBar::kScaledRange / 2;
    QTest::newRow("wide, end") << kTenGiga << qint64{0} << kTenGiga << ProgressBar::kScaledRange;
    QTest::newRow("wide, beyond the end")
        << 2 * kTenGiga << qint64{0} << kTenGiga << ProgressBar::kScaledRange;
    QTest::newRow("full 64-bit span, middle")
        << qint64{0} << std::numeric_limits<qint64>::min() << std::numeric_limits<qint64>::max()
        << ProgressBar::kScaledRange / 2;
}

void ProgressBarTest::WideRangesAreScaled() {
    QFETCH(qint64, value);
    QFETCH(qint64, min);
    QFETCH(qint64, max);
    QFETCH(int, expected);

    QCOMPARE(ProgressBar::ScaledValue(value, min, max), expected);

    ProgressBar control;
    control.SetMax(max);
    control.SetMin(min);
    control.SetPosition(value);
    QCOMPARE(control.Position(), std::clamp(value, min, max));
    QCOMPARE(control.hwnd()->value(), expected);
}

void ProgressBarTest::SunkenEdgeFramesTheControl() {
    ProgressBar control;
    control.resize(200, 24);
    control.SetBorderStyle(ProgressBar::BorderSunkenControl);
    QCOMPARE(control.frameShadow(), QFrame::Sunken);
    QVERIFY(control.frameWidth() > 0);
    QCOMPARE(control.hwnd()->geometry(), control.contentsRect());
    control.SetBorderStyle(5);
    QCOMPARE(control.BorderStyle(), int(ProgressBar::BorderSunkenControl));
}

void ProgressBarTest::ColoursTranslate_data() {
    QTest::addColumn<uint>("stored");
    QTest::addColumn<QColor>("expected");

    const QPalette palette;
    QTest::newRow("red is the low byte") << 0x0000FFu << QColor(255, 0, 0);
    QTest::newRow("blue is the high byte") << 0xFF0000u << QColor(0, 0, 255);
    QTest::newRow("mixed") << 0xBFB8BFu << QColor(0xBF, 0xB8, 0xBF);
    QTest::newRow("button face") << 0x8000000Fu << palette.color(QPalette::Button);
    QTest::newRow("highlight") << 0x8000000Du << palette.color(QPalette::Highlight);
    QTest::newRow("application workspace") << 0x8000000Cu << palette.color(QPalette::Mid);
    QTest::newRow("undefined system colour 25") << 0x80000019u << QColor();
    QTest::newRow("system colour beyond the table") << 0x800000FFu << QColor();
    QTest::newRow("palette index form") << 0x01000005u << QColor();
}

void ProgressBarTest::ColoursTranslate() {
    QFETCH(uint, stored);
    QFETCH(QColor, expected);
    QCOMPARE(TranslateOleColor(stored, QPalette()), expected);
}

} // namespace kelvora

QTEST_MAIN(kelvora::ProgressBarTest)
#include "ProgressBarTest.moc"
