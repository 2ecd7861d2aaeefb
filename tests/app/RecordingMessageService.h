#pragma once

#include "app/MessageService.h"

#include <QList>
#include <QStringList>

namespace kelvora::testing {

// RecordingMessageService stands in for every dialog of a window under test: it records
// which catalogue ids were shown (with text and title) and which addresses were opened,
// and answers questions from a script (OK or Yes when the script is empty). File and folder
// dialogs are recorded in the same list as kFileDialog (text: the filter or the suggested
// name) and answered from their own scripts (cancelled when those are empty).
class RecordingMessageService final : public MessageService {
public:
    struct Shown {
        int id;
        QString text;
        QString title;
    };

    static constexpr int kFileDialog = 0;

    QList<Shown> shown;
    QStringList openedUrls;
    QList<Answer> answers;
    QList<QStringList> openAnswers;
    QStringList saveAnswers;
    QStringList folderAnswers;

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
    QStringList OpenFileNames(const QString& title, const QString& filter, bool) override {
        shown.append({kFileDialog, filter, title});
        return openAnswers.isEmpty() ? QStringList() : openAnswers.takeFirst();
    }
    QString SaveFileName(const QString& title, const QString&, const QString& suggested) override {
        shown.append({kFileDialog, suggested, title});
        return saveAnswers.isEmpty() ? QString() : saveAnswers.takeFirst();
    }
    QString ExistingFolder(const QString& title) override {
        shown.append({kFileDialog, QString(), title});
        return folderAnswers.isEmpty() ? QString() : folderAnswers.takeFirst();
    }
    void OpenUrl(const QString& url) override { openedUrls.append(url); }
};

} // namespace kelvora::testing
