#include "app/MessageService.h"

#include "app/WindowTestTools.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QTest>
#include <QTimer>

namespace kelvora {

using namespace Qt::StringLiterals;
using namespace testing;

class MessageServiceTest : public QObject {
    Q_OBJECT

private slots:
    // A box's OK, Cancel, Yes and No, and a file dialog's buttons, speak the window's language.
    void ButtonsSpeakTheWindowsLanguage() {
        for (const auto& [language, texts] :
             {std::pair{kGerman, QStringList{u"OK"_s, u"Abbrechen"_s, u"Ja"_s, u"Nein"_s}},
              {kEnglish, QStringList{u"OK"_s, u"Cancel"_s, u"Yes"_s, u"No"_s}},
              {kSpanish,
               QStringList{Catalogue(kSpanish, 151), Catalogue(kSpanish, 150), u"Sí"_s, u"No"_s}},
              {kFrench, QStringList{Catalogue(kFrench, 151), Catalogue(kFrench, 150), u"Oui"_s,
                                    u"Non"_s}}}) {
            QMessageBox box(QMessageBox::Question, u"t"_s, u"x"_s,
                            QMessageBox::Ok | QMessageBox::Cancel | QMessageBox::Yes |
                                QMessageBox::No);
            LabelButtons(box, language);
            QStringList shown;
            for (const auto which :
                 {QMessageBox::Ok, QMessageBox::Cancel, QMessageBox::Yes, QMessageBox::No}) {
                shown << box.button(which)->text();
            }
            QCOMPARE(shown, texts);
            QFileDialog dialog;
            LabelFileDialog(dialog, language, kOpenButtonId);
            QCOMPARE(dialog.labelText(QFileDialog::Accept), Catalogue(language, 105));
            QCOMPARE(dialog.labelText(QFileDialog::Reject), texts[1]);
        }
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
