#pragma once

#include "files/InputList.h"

#include <QListWidget>
#include <cstdint>
#include <vector>

namespace kelvora {

class JobHost;

// InputListBox is LstCryptFiles: it shows the input list (one full path a line) and keeps the
// list itself with every entry's size. Folders are walked on a worker thread inside a job,
// so the window stays responsive and cmdCancel stops a long walk. Delete removes the
// selected entries.
class InputListBox : public QListWidget {
    Q_OBJECT

public:
    explicit InputListBox(QWidget* parent = nullptr);

    // AddPaths adds every path in order: a folder as a directory structure, anything else as
    // a lone file. It returns true when at least one addition was refused as a duplicate.
    bool AddPaths(const QStringList& paths, JobHost& host);
    // RemoveSelected takes the selected entries out of the list.
    void RemoveSelected();
    void ClearAll();

    // The list may be read and changed only while no folder walk runs (the window is idle).
    const InputList& List() const { return m_list; }
    InputList& List() { return m_list; }
    // The total size of the entries shown.
    std::int64_t TotalBytes() const { return m_totalBytes; }

signals:
    // Changed follows every change of the list's entries.
    void Changed();

protected:
    void keyPressEvent(QKeyEvent* event) override;

private:
    void ShowEntriesFrom(std::size_t first);

    InputList m_list;
    std::vector<std::int64_t> m_sizes;
    std::int64_t m_totalBytes = 0;
};

} // namespace kelvora
