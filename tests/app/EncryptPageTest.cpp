#include "app/EncryptPage.h"

#include "app/WindowHarness.h"

#include <QListWidget>

namespace kelvora {

using namespace Qt::StringLiterals;
using testing::Harness;

class EncryptPageTest : public QObject {
    Q_OBJECT

private slots:
    void FieldsAreNamedByTheirCaptions() {
        Harness h(kEnglish, "/filee");
        QCOMPARE(h.Find<QLabel>("LblInputFiles")->buddy(), h.Find("LstCryptFiles"));
        QCOMPARE(h.Find<QLabel>("LblOutputFile")->buddy(), h.Find("TxtEncrFileName"));
        QCOMPARE(h.Find<EncryptPage>("FrameEncrypt")->FirstField(), h.Find("LstCryptFiles"));
        QVERIFY(h.Find<QListWidget>("LstCryptFiles")->selectionMode() ==
                QAbstractItemView::ExtendedSelection);
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::EncryptPageTest)
#include "EncryptPageTest.moc"
