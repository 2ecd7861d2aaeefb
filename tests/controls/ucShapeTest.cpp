#include "controls/ucShape.h"

#include <QImage>
#include <QTest>

namespace kelvora {

namespace {

constexpr OleColor kRed = 0x0000FFu;
constexpr OleColor kGreen = 0x00FF00u;
constexpr OleColor kBlue = 0xFF0000u;
constexpr OleColor kLightGrey = 0xBFB8BFu;

QColor Rgb(OleColor colour) {
    return TranslateOleColor(colour, QPalette());
}

} // namespace

class ucShapeTest : public QObject {
    Q_OBJECT

private slots:
    void ForeColorPairsItsTwoDefaults() {
        // Blue is what goes unsaved, light grey what an absent value reads back as.
        QCOMPARE(ucShape().ForeColor(), kLightGrey);
        for (const OleColor outline : {kBlue, kLightGrey}) {
            ucShape saved;
            saved.SetForeColor(outline);
            PropertyBag bag;
            saved.WriteProperties(bag);
            QCOMPARE(bag.Values().keys(),
                     outline == kBlue ? QStringList() : QStringList{QStringLiteral("ForeColor")});

            ucShape loaded;
            loaded.SetForeColor(kRed);
            loaded.ReadProperties(bag);
            QCOMPARE(loaded.ForeColor(), kLightGrey);
        }
    }

    void OtherPropertiesSurviveSaveAndLoad() {
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

    void NeverSmallerThan32Pixels_data() {
        QTest::addColumn<QSize>("requested");
        QTest::addColumn<QSize>("expected");

        QTest::newRow("too narrow") << QSize(10, 50) << QSize(32, 50);
        QTest::newRow("too low") << QSize(50, 31) << QSize(50, 32);
        QTest::newRow("exactly the limit") << QSize(32, 32) << QSize(32, 32);
    }

    void NeverSmallerThan32Pixels() {
        QFETCH(QSize, requested);
        QFETCH(QSize, expected);

        // A shown control whose form lowered the minimum size snaps back as well.
        QWidget form;
        form.resize(200, 200);
        auto* shown = new ucShape(&form);
        shown->setMinimumSize(0, 0);
        form.show();
        QVERIFY(QTest::qWaitForWindowExposed(&form));
        ucShape hidden;
        for (QWidget* shape : {static_cast<QWidget*>(&hidden), static_cast<QWidget*>(shown)}) {
            shape->resize(requested);
            QCOMPARE(shape->size(), expected);
        }
    }

    void PaintsOutlineFillAndCorners_data() {
        QTest::addColumn<int>("rounding");
        QTest::addColumn<uint>("cornerColour");

        QTest::newRow("rounding 0 is a plain rectangle") << 0 << uint{kBlue};
        QTest::newRow("rounded corners show the back colour") << 24 << uint{kRed};
    }

    void PaintsOutlineFillAndCorners() {
        QFETCH(int, rounding);
        QFETCH(uint, cornerColour);

        ucShape shape;
        shape.resize(80, 60);
        shape.SetForeColor(kBlue);
        shape.SetFillColor(kGreen);
        shape.SetBackColor(kRed);
        shape.SetRounding(rounding);
        const QImage image = shape.grab().toImage();
        QCOMPARE(image.size(), QSize(80, 60));

        for (const QPoint corner : {QPoint(0, 0), QPoint(79, 0), QPoint(0, 59), QPoint(79, 59)}) {
            QCOMPARE(image.pixelColor(corner), Rgb(cornerColour));
        }
        for (const QPoint edge : {QPoint(40, 0), QPoint(0, 30), QPoint(79, 30), QPoint(40, 59)}) {
            QCOMPARE(image.pixelColor(edge), Rgb(kBlue));
        }
        QCOMPARE(image.pixelColor(40, 30), Rgb(kGreen));
        QCOMPARE(image.pixelColor(1, 30), Rgb(kGreen));
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::ucShapeTest)
#include "ucShapeTest.moc"
