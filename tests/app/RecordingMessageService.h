#pragma once

#include "app/MessageService.h"

#include <QList>
#include <QStringList>

namespace kelvora::testing {

// RecordingMessageService stands in for every dialog of a window under test: it records
// which catalogue ids were shown (with text and title) and which addresses were opened,
// and answers questions from a script (OK or Yes when the script is empty).
class RecordingMessageService final : public MessageService {
public:
    struct Shown {
        int id;
        QString text;
        QString title;
    };

    QList<Shown> shown;
    QStringList openedUrls;
    QList<Answer> answers;

    QList<int> ShownIds() const {
        QList<int> ids;
        for (const Shown& entry : shown) {
            ids.append(entry.id);
        }
        return ids;
    }

    void ShowMessage(int id, const QString& text, Icon, const QString& title) override {
        shown.append({id, text, title});
    }
    Answer AskOkCancel(int id, const QString& text, const QString& title) override {
        shown.append({id, text, title});
        return answers.isEmpty() ? Answer::Ok : answers.takeFirst();
    }
    Answer AskYesNo(int id, const QString& text, const QString& title) override {
        shown.append({id, text, title});
        return answers.isEmpty() ? Answer::Yes : answers.takeFirst();
    }
    QStringList OpenFileNames(const QString&, const QString&, bool) override { return {}; }
    QString SaveFileName(const QString&, const QString&, const QString&) override { return {}; }
    QString ExistingFolder(const QString&) override { return {}; }
    void OpenUrl(const QString& url) override { openedUrls.append(url); }
};

} // namespace kelvora::testing
