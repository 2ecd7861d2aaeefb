#include "app/MessageService.h"

#include "app/WindowTestTools.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

namespace kelvora {
namespace {

using namespace Qt::StringLiterals;

using testing::Catalogue;

// ButtonTexts lists a box's OK, Cancel, Yes and No texts, in that order.
QStringList ButtonTexts(QMessageBox& box) {
    QStringList texts;
    for (const auto which :
         {QMessageBox::Ok, QMessageBox::Cancel, QMessageBox::Yes, QMessageBox::No}) {
        texts << box.button(which)->text();
    }
    return texts;
}

} // namespace

class MessageServiceTest : public QObject {
    Q_OBJECT

private slots:
    void BoxButtonsSpeakTheWindowsLanguage_data() {
        QTest::addColumn<int>("languageOffset");
        QTest::addColumn<QStringList>("texts");
        QTest::newRow("German") << kGerman
                                << QStringList{u"OK"_s, u"Abbrechen"_s, u"Ja"_s, u"Nein"_s};
        QTest::newRow("English") << kEnglish
                                 << QStringList{u"OK"_s, u"Cancel"_s, u"Yes"_s, u"No"_s};
        QTest::newRow("Spanish") << kSpanish
                                 << QStringList{Catalogue(kSpanish, 151), Catalogue(kSpanish, 150),
                                                u"Sí"_s, u"No"_s};
        QTest::newRow("French") << kFrench
                                << QStringList{Catalogue(kFrench, 151), Catalogue(kFrench, 150),
                                               u"Oui"_s, u"Non"_s};
    }

    void BoxButtonsSpeakTheWindowsLanguage() {
        QFETCH(int, languageOffset);
        QFETCH(QStringList, texts);
        QMessageBox box(QMessageBox::Question, u"t"_s, u"x"_s,
                        QMessageBox::Ok | QMessageBox::Cancel | QMessageBox::Yes | QMessageBox::No);
        LabelButtons(box, languageOffset);
        QCOMPARE(ButtonTexts(box), texts);

        QFileDialog dialog;
        LabelFileDialog(dialog, languageOffset, kOpenButtonId);
        QCOMPARE(dialog.labelText(QFileDialog::Accept), Catalogue(languageOffset, 105));
        QCOMPARE(dialog.labelText(QFileDialog::Reject), texts[1]);
    }

    // The real service labels the box it shows and reports the button pressed.
    void QuestionAsksInTheLanguageItIsGiven() {
        QtMessageService service;
        int language = kGerman;
        service.SetLanguageSource([&language] { return language; });
        QStringList seen;
        const auto answerNo = [&seen] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box != nullptr);
            seen << box->button(QMessageBox::Yes)->text() << box->button(QMessageBox::No)->text();
            box->button(QMessageBox::No)->click();
        };
        QTimer::singleShot(0, answerNo);
        QCOMPARE(service.AskYesNo(592, u"?"_s, QString()), MessageService::Answer::No);
        language = kFrench;
        QTimer::singleShot(0, answerNo);
        QCOMPARE(service.AskYesNo(592, u"?"_s, QString()), MessageService::Answer::No);
        QCOMPARE(seen, (QStringList{u"Ja"_s, u"Nein"_s, u"Oui"_s, u"Non"_s}));
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::MessageServiceTest)
#include "MessageServiceTest.moc"
