#include "app/DecryptPage.h"

#include "app/WindowHarness.h"

namespace kelvora {

using namespace Qt::StringLiterals;
using testing::Harness;

class DecryptPageTest : public QObject {
    Q_OBJECT

private slots:
    // Each field is named by its caption (what a screen reader announces), and a container
    // named from outside proposes its own folder as the output.
    void FieldsAreNamedByTheirCaptionsAndTakeAContainer() {
        Harness h(kGerman, "/filed");
        QCOMPARE(h.Find<QLabel>("LblDecrFile")->buddy(), h.Find("TxtDecrFile"));
        QCOMPARE(h.Find<QLabel>("LblDecrOutPath")->buddy(), h.Find("TxtDecrOutPath"));
        auto* page = h.Find<DecryptPage>("FrameDecrypt");
        page->SetContainer(u"/a b/c.vexo"_s, u"/a b/"_s);
        QCOMPARE(h.Find<QLineEdit>("TxtDecrFile")->text(), u"/a b/c.vexo"_s);
        QCOMPARE(h.Find<QLineEdit>("TxtDecrOutPath")->text(), u"/a b/"_s);
        QCOMPARE(page->FirstField(), h.Find("TxtDecrFile"));
    }
};

} // namespace kelvora

QTEST_MAIN(kelvora::DecryptPageTest)
#include "DecryptPageTest.moc"
