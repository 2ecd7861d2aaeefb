#include "i18n/LocaliseForm.h"

#include "about/FrmAbout.h"
#include "app/FCrypt.h"
#include "app/RecordingMessageService.h"
#include "app/WindowTestTools.h"
#include "common/FixedRandom.h"
#include "i18n/TextIds.h"
#include "mail/frmEmail.h"
#include "tools/FrmTast.h"

#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextEdit>
#include <QtTest>
#include <memory>
#include <set>

using namespace Qt::StringLiterals;

namespace kelvora {

namespace {

using testing::Catalogue;

// ShownText reads what a control shows, whatever its kind.
QString ShownText(const QWidget* widget) {
    for (const char* property : {"title", "plainText", "text"}) {
        if (const QVariant shown = widget->property(property); shown.isValid()) {
            return shown.toString();
        }
    }
    return {};
}

} // namespace

class LocaliseFormTest : public QObject {
    Q_OBJECT

private slots:
    // A small window with one control of each kind the localiser labels that the real windows do
    // not mark (their labels and buttons are walked below), some of them nested, and marks that
    // name no text of a language or no text at all: those leave the control as it was.
    void SwitchingLanguagesRelabelsEveryMarkedControl() {
        QWidget form;
        auto* group = new QGroupBox(&form);
        const std::pair<QWidget*, int> marked[] = {{group, 145},
                                                   {new QLineEdit(&form), 153},
                                                   {new QTextEdit(group), 149},
                                                   {new QPlainTextEdit(&form), 165}};
        for (const auto& [control, germanId] : marked) {
            control->setProperty("Tag", u"#%1"_s.arg(germanId));
        }
        auto* back = new QPushButton(&form); // only English and Spanish have a text 182
        back->setProperty("Tag", u"#182"_s);
        back->setToolTip(u"#162"_s);
        group->setToolTip(u"Leertaste betätigen"_s);
        auto* noNumber = new QLabel(u"kept"_s, &form);
        noNumber->setProperty("Tag", u"#abc"_s);
        noNumber->setToolTip(u"#182"_s);
        for (const int language : {kGerman, kFrench, kSpanish, kFrench, kGerman}) {
            LocaliseForm(&form, language);
            for (const auto& [control, germanId] : marked) {
                QCOMPARE(ShownText(control), Catalogue(language, germanId));
            }
            // A tooltip is translated only while it still is a mark, so it keeps the first
            // language that has its text.
            QCOMPARE(back->toolTip(), Catalogue(kGerman, 162));
            QCOMPARE(group->toolTip(), u"Leertaste betätigen"_s);
            QCOMPARE(noNumber->text(), u"kept"_s);
        }
        QCOMPARE(back->text(), Catalogue(kSpanish, 182));
        QCOMPARE(noNumber->toolTip(), Catalogue(kSpanish, 182));
        // Only the first ampersand of a title goes (a marked title is the side windows' test).
        QWidget titled;
        titled.setWindowTitle(u"&Datei & Co"_s);
        LocaliseForm(&titled, kFrench);
        QCOMPARE(titled.windowTitle(), u"Datei & Co"_s);
    }

    // Every marked control of the real windows shows its mark's text in each language, and every
    // mark names a text of the named-text header, which the catalogue test checks in every
    // language.
    void RealWindowsShowTheTextsOfTheirMarks() {
        testing::RecordingMessageService messages;
        testing::FixedRandom random;
        QLineEdit passphrase;
        const std::set<int> named(kNamedTextIds.begin(), kNamedTextIds.end());
        for (const int language : {kGerman, kEnglish, kSpanish, kFrench}) {
            FCrypt main(messages, random, language);
            main.Load(std::string(), u"kelvora"_s);
            frmEmail mail(messages, language);
            FrmTast keyboard(passphrase, language, 0x04070407);
            std::vector<QWidget*> windows{&main, &mail, &keyboard};
            std::vector<std::unique_ptr<FrmAbout>> about;
            for (const double draw : {0.0, 0.5, 1.0}) { // one draw for each panel
                windows.push_back(about.emplace_back(new FrmAbout(messages, language, draw)).get());
            }
            int marks = 0;
            for (QWidget* window : windows) {
                for (QWidget* control : window->findChildren<QWidget*>()) {
                    const QString mark = control->property("Tag").toString();
                    if (!mark.startsWith(u'#')) {
                        continue;
                    }
                    const int id = mark.mid(1).toInt();
                    QVERIFY2(named.contains(id), qPrintable(mark));
                    QCOMPARE(ShownText(control), Catalogue(language, id));
                    ++marks;
                }
            }
            QVERIFY2(marks > 40, qPrintable(QString::number(marks)));
        }
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::LocaliseFormTest)
#include "LocaliseFormTest.moc"
