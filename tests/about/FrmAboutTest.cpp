#include "about/FrmAbout.h"

#include "app/RecordingMessageService.h"
#include "app/WindowTestTools.h"
#include "common/Version.h"

#include <QAccessible>
#include <QLabel>
#include <QPointer>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

namespace kelvora {

using namespace Qt::StringLiterals;

namespace {

using testing::Catalogue;

// Harness owns a shown welcome window whose panel comes from a fixed draw.
struct Harness {
    testing::RecordingMessageService messages;
    QPointer<FrmAbout> window;

    Harness(double draw, int languageOffset)
        : window(new FrmAbout(messages, languageOffset, draw)) {
        window->show();
    }
    ~Harness() { delete window; }

    template <typename Widget = QWidget> Widget* Find(const QString& name) {
        return testing::FindControl<Widget>(window.data(), name);
    }
    QString Shown(const char* name) { return Find<QLabel>(QString::fromLatin1(name))->text(); }
    void Click(const char* name) {
        QTest::mouseClick(Find(QString::fromLatin1(name)), Qt::LeftButton);
    }
    // Opened is the address the last click or key asked for, or nothing.
    QString Opened() {
        return messages.openedUrls.isEmpty() ? QString() : messages.openedUrls.takeLast();
    }
};

constexpr double kFirstDraw = 0.33;
constexpr double kSecondDraw = 0.66;
constexpr double kThirdDraw = 0.6600001;

} // namespace

class FrmAboutTest : public QObject {
    Q_OBJECT

private slots:
    // Which draw chooses which panel and which address a link opens are the panel rules'
    // tables; these rows (draw, heading, links with their texts) prove that the window shows the
    // drawn panel and asks for each address with its panel, the language its flags chose and the
    // link's index. A link is named by its text, reached with Tab and followed with Enter too.
    void PanelAndLinksForFixedDraws() {
        using Links = QList<std::pair<int, int>>;
        for (const auto& [draw, headingId, links] : {std::tuple{kFirstDraw, 562, Links{{1, 565}}},
                                                     {kSecondDraw, 201, Links{{2, 568}, {5, 569}}},
                                                     {kThirdDraw, 570, Links{{3, 573}}}}) {
            Harness h(draw, kSpanish);
            h.Click("ImageDE");
            QCOMPARE(h.Shown("LblHeading"), Catalogue(kGerman, headingId, u"Kelvora Toolbox"_s));
            const QRegularExpression anyLink(u"^Label2_"_s);
            QCOMPARE(h.window->findChildren<QLabel*>(anyLink).size(), links.size());
            for (const auto& [index, textId] : links) {
                const QString address =
                    QString::fromStdString(LinkAddress(PanelForDraw(draw), 0, index));
                QWidget* link = h.Find(u"Label2_%1"_s.arg(index));
                QTest::mouseClick(link, Qt::LeftButton);
                QCOMPARE(h.Opened(), address);
                QCOMPARE(QAccessible::queryAccessibleInterface(link)->text(QAccessible::Name),
                         Catalogue(kGerman, textId));
                QVERIFY(link->focusPolicy() & Qt::TabFocus);
                QTest::keyClick(link, Qt::Key_Return);
                QCOMPARE(h.Opened(), address);
            }
            QVERIFY(h.messages.openedUrls.isEmpty());
        }
    }

    // The flags choose the language: the chosen flag alone is marked (how a mark looks and that
    // the main window hears of the choice are the main window's tests), the version line follows
    // (the heading is the panel table's), and French leaves out the tool lines it lacks.
    void FlagsChooseTheLanguageAndStartCloses() {
        Harness h(kSecondDraw, kGerman);
        QCOMPARE(h.Shown("LblTool_1"), u"• "_s + Catalogue(kGerman, 203));
        for (const auto& [flag, language] : {std::pair{"ImageFR", kFrench},
                                             {"ImageES", kSpanish},
                                             {"ImageEN", kEnglish},
                                             {"ImageDE", kGerman}}) {
            h.Click(flag);
            QCOMPARE(h.Shown("LblVersion"),
                     Catalogue(language, 561, QString::fromLatin1(kVersionText)));
            QCOMPARE(h.Find(u"LblTool_0"_s)->isVisible(), language != kFrench);
            for (const char* other : {"ImageDE", "ImageEN", "ImageES", "ImageFR"}) {
                auto* image = h.Find<QLabel>(QString::fromLatin1(other));
                const bool marked = qstrcmp(other, flag) == 0;
                QCOMPARE(image->property("BorderStyle").toInt(), marked ? 1 : 0);
            }
            QCOMPARE(h.window->Panel(), AboutPanel::MakerTool);
        }
        QCOMPARE(h.Find(u"ImageES"_s)->accessibleName(), u"Español"_s);
        // From the keyboard: Tab reaches a flag, Space or Enter chooses it.
        QVERIFY(h.Find(u"ImageES"_s)->focusPolicy() & Qt::TabFocus);
        QTest::keyClick(h.Find(u"ImageES"_s), Qt::Key_Space);
        QCOMPARE(h.window->LanguageBase(), 2000);
        QTest::keyClick(h.Find(u"ImageEN"_s), Qt::Key_Return);
        QCOMPARE(h.Shown("LblParagraph"), Catalogue(kEnglish, 566));
        // Start asks for the main window and closes the welcome window.
        QSignalSpy start(h.window.data(), &FrmAbout::StartRequested);
        h.Click("Command1");
        QCOMPARE(start.size(), 1);
        QTRY_VERIFY(h.window.isNull());
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::FrmAboutTest)
#include "FrmAboutTest.moc"
