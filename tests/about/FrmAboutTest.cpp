#include "about/FrmAbout.h"

#include "app/RecordingMessageService.h"
#include "app/WindowTestTools.h"
#include "common/Version.h"
#include "i18n/TextIds.h"

#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QPointer>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace kelvora {
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
    void ClickFlag(const char* name) {
        QTest::mouseClick(Find(QString::fromLatin1(name)), Qt::LeftButton);
    }
    // ClickLink follows element index of Label2 and returns the address it opened.
    QString ClickLink(int index) {
        QTest::mouseClick(Find(QStringLiteral("Label2_%1").arg(index)), Qt::LeftButton);
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
    void PanelForFixedDraws_data() {
        QTest::addColumn<double>("draw");
        QTest::addColumn<int>("headingId");
        QTest::addColumn<QStringList>("links");
        QTest::newRow("zero") << 0.0 << 562 << QStringList{u"Label2_1"_qs};
        QTest::newRow("first bound") << kFirstDraw << 562 << QStringList{u"Label2_1"_qs};
        QTest::newRow("above first")
            << 0.3300001 << 201 << QStringList{u"Label2_2"_qs, u"Label2_5"_qs};
        QTest::newRow("second bound")
            << kSecondDraw << 201 << QStringList{u"Label2_2"_qs, u"Label2_5"_qs};
        QTest::newRow("above second") << kThirdDraw << 570 << QStringList{u"Label2_3"_qs};
    }

    void PanelForFixedDraws() {
        QFETCH(double, draw);
        QFETCH(int, headingId);
        QFETCH(QStringList, links);
        Harness h(draw, kEnglish);
        QCOMPARE(h.Shown("LblHeading"), Catalogue(kEnglish, headingId, u"Kelvora Toolbox"_qs));
        QStringList found;
        for (const QLabel* label : h.window->findChildren<QLabel*>()) {
            if (label->objectName().startsWith(u"Label2_"_qs)) {
                found << label->objectName();
            }
        }
        found.sort();
        QCOMPARE(found, links);
    }

    // Which address a link opens is the link rules' table; these rows prove that the window
    // asks it with its panel, the language its flags chose and the link's element index.
    void LinksByPanelAndLanguage_data() {
        QTest::addColumn<double>("draw");
        QTest::addColumn<QString>("flag");
        QTest::addColumn<int>("label");
        const std::pair<const char*, const char*> flags[] = {{"ImageDE", "de"}, {"ImageFR", "fr"}};
        for (const auto& [flag, language] : flags) {
            const QString name = QString::fromLatin1(flag);
            QTest::addRow("privacy %s", language) << kFirstDraw << name << 1;
            QTest::addRow("tool %s", language) << kSecondDraw << name << 2;
            QTest::addRow("start page %s", language) << kSecondDraw << name << 5;
            QTest::addRow("partner %s", language) << kThirdDraw << name << 3;
        }
    }

    void LinksByPanelAndLanguage() {
        QFETCH(double, draw);
        QFETCH(QString, flag);
        QFETCH(int, label);
        Harness h(draw, kSpanish);
        h.ClickFlag(flag.toLatin1().constData());
        QCOMPARE(h.ClickLink(label), QString::fromStdString(LinkAddress(
                                         PanelForDraw(draw), h.window->LanguageBase(), label)));
        QVERIFY(h.messages.openedUrls.isEmpty());
    }

    void LinkFollowedFromTheKeyboard() {
        Harness h(kFirstDraw, kEnglish);
        h.window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(h.window));
        auto* link = h.Find<QLabel>(u"Label2_1"_qs);
        QCOMPARE(QAccessible::queryAccessibleInterface(link)->text(QAccessible::Name),
                 Catalogue(kEnglish, 565));
        // Tab from the flags walks into the link; Enter follows it.
        h.Find(u"ImageFR"_qs)->setFocus(Qt::TabFocusReason);
        for (int step = 0; step < 8 && !link->hasFocus(); ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        }
        QVERIFY(link->hasFocus());
        QTest::keyClick(link, Qt::Key_Return);
        QCOMPARE(h.messages.openedUrls, QStringList{u"https://privacy.kelvora.net/?aref=0"_qs});
    }

    void FlagsRefillTheTexts() {
        Harness h(kSecondDraw, kGerman);
        QSignalSpy chosen(h.window.data(), &FrmAbout::LanguageChosen);
        QCOMPARE(h.window->LanguageBase(), 0);
        QVERIFY(h.Find(u"LblTool_1"_qs)->isVisible());
        QCOMPARE(h.Shown("LblTool_1"), u"• "_qs + Catalogue(kGerman, 203));
        const std::pair<const char*, int> flags[] = {{"ImageFR", kFrench},
                                                     {"ImageES", kSpanish},
                                                     {"ImageEN", kEnglish},
                                                     {"ImageDE", kGerman}};
        for (const auto& [flag, language] : flags) {
            h.ClickFlag(flag);
            QCOMPARE(chosen.takeLast().at(0).toInt(), language);
            QCOMPARE(h.window->windowTitle(), Catalogue(language, 200));
            QCOMPARE(h.Shown("LblWelcome"), Catalogue(language, 200));
            QCOMPARE(h.Shown("LblDescription"), Catalogue(language, 560));
            QCOMPARE(h.Shown("LblVersion"),
                     Catalogue(language, 561, QString::fromLatin1(kVersionText)));
            QCOMPARE(h.Shown("LblHeading"), Catalogue(language, 201, u"Kelvora Toolbox"_qs));
            QCOMPARE(h.Shown("LblParagraph"), Catalogue(language, 566));
            QCOMPARE(h.Shown("Label2_5"), Catalogue(language, 569));
            // French has no tool descriptions: they are left out, not shown as markers.
            QCOMPARE(h.Find(u"LblTool_0"_qs)->isVisible(), language != kFrench);
            QCOMPARE(h.Find(QString::fromLatin1(flag))->property("BorderStyle").toInt(), 1);
            QCOMPARE(h.window->Panel(), AboutPanel::MakerTool);
        }
        QCOMPARE(h.Find(u"ImageFR"_qs)->property("BorderStyle").toInt(), 0);
        QCOMPARE(h.Find(u"ImageES"_qs)->accessibleName(), u"Español"_qs);
        // From the keyboard: Tab reaches a flag, Space or Enter chooses it.
        QVERIFY(h.Find(u"ImageES"_qs)->focusPolicy() & Qt::TabFocus);
        QTest::keyClick(h.Find(u"ImageES"_qs), Qt::Key_Space);
        QCOMPARE(h.window->LanguageBase(), 2000);
        QTest::keyClick(h.Find(u"ImageEN"_qs), Qt::Key_Return);
        QCOMPARE(h.Shown("LblParagraph"), Catalogue(kEnglish, 566));
    }

    void StartClosesTheWindow() {
        Harness h(0.5, kFrench);
        QSignalSpy start(h.window.data(), &FrmAbout::StartRequested);
        QTest::mouseClick(h.Find(u"Command1"_qs), Qt::LeftButton);
        QCOMPARE(start.size(), 1);
        QTRY_VERIFY(h.window.isNull());
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::FrmAboutTest)
#include "FrmAboutTest.moc"
