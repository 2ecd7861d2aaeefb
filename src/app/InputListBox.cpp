#include "app/InputListBox.h"

#include "app/BackgroundJob.h"
#include "app/JobScope.h"
#include "app/WorkingPanel.h"

#include <QKeyEvent>
#include <algorithm>
#include <filesystem>

namespace kelvora {
namespace {

// WalkObserver carries cmdCancel into a running folder walk.
class WalkObserver final : public JobObserver {
public:
    WalkObserver(FileJobObserver& job, InputList& list) : m_job(job), m_list(list) {}
    void LetEventsRun() override {
        if (m_job.CancelRequested()) {
            m_list.RequestCancel();
        }
    }

private:
    FileJobObserver& m_job;
    InputList& m_list;
};

std::int64_t SizeOf(const std::string& path) {
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    return error ? 0 : static_cast<std::int64_t>(size);
}

} // namespace

InputListBox::InputListBox(QWidget* parent) : QListWidget(parent) {
    setObjectName(QStringLiteral("LstCryptFiles"));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setUniformItemSizes(true); // keeps a list of many thousand paths quick
    setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

bool InputListBox::AddPaths(const QStringList& paths, JobHost& host) {
    const std::size_t first = m_list.Entries().size();
    bool refused = false;
    std::vector<std::int64_t> sizes; // measured on the worker, taken over once it is done
    {
        JobScope job(host);
        FileJobObserver answers; // a walk asks nothing
        BackgroundJob walk(job.Observer(), answers);
        const FileJobResult result = walk.Run([&](FileJobObserver& observer) {
            WalkObserver cancel(observer, m_list);
            for (const QString& path : paths) {
                refused = m_list.AddListPath(path.toStdString(), &cancel) || refused;
                if (observer.CancelRequested()) {
                    break;
                }
            }
            const std::vector<InputEntry>& entries = m_list.Entries();
            for (std::size_t i = first; i < entries.size(); ++i) {
                sizes.push_back(SizeOf(entries[i].path));
            }
            return FileJobResult{};
        });
        (void)result;
    }
    for (const std::int64_t size : sizes) {
        m_sizes.push_back(size);
        m_totalBytes += size;
    }
    ShowEntriesFrom(first);
    return refused;
}

void InputListBox::RemoveSelected() {
    std::vector<std::size_t> rows;
    for (const QModelIndex& index : selectionModel()->selectedIndexes()) {
        rows.push_back(static_cast<std::size_t>(index.row()));
    }
    if (rows.empty()) {
        return;
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    m_list.RemoveEntries(rows);
    std::size_t kept = 0;
    for (std::size_t i = 0, next = 0; i < m_sizes.size(); ++i) {
        if (next < rows.size() && rows[next] == i) {
            m_totalBytes -= m_sizes[i];
            ++next;
        } else {
            m_sizes[kept++] = m_sizes[i];
        }
    }
    m_sizes.resize(kept);
    clear();
    ShowEntriesFrom(0);
}

void InputListBox::ClearAll() {
    m_list.Clear();
    m_sizes.clear();
    m_totalBytes = 0;
    clear();
    emit Changed();
}

void InputListBox::ShowEntriesFrom(std::size_t first) {
    QStringList lines;
    const std::vector<InputEntry>& entries = m_list.Entries();
    lines.reserve(static_cast<qsizetype>(entries.size() - std::min(first, entries.size())));
    for (std::size_t i = first; i < entries.size(); ++i) {
        lines << QString::fromStdString(entries[i].path);
    }
    addItems(lines);
    emit Changed();
}

void InputListBox::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete) {
        RemoveSelected();
        return;
    }
    QListWidget::keyPressEvent(event);
}

} // namespace kelvora
