#pragma once

// FileTree is the tests' temporary folder seen from Qt, with helpers to write generated
// contents and to read back whole trees for byte-for-byte comparison.
#include "common/TempFolder.h"
#include "common/TestBytes.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>

namespace kelvora::testing {

class FileTree {
public:
    QString Path(const QString& relative = {}) const {
        const QString root = QString::fromStdString(m_folder.path().string());
        return relative.isEmpty() ? root : root + u'/' + relative;
    }

    // Write makes the file (and its folders) with the given bytes.
    QString Write(const QString& relative, const QByteArray& bytes) const {
        const QString path = Path(relative);
        QDir().mkpath(QFileInfo(path).absolutePath());
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("cannot write %s", qPrintable(path));
        }
        return path;
    }

    // WriteNoise writes size bytes that do not compress.
    QString WriteNoise(const QString& relative, qint64 size) const {
        const Bytes noise =
            PatternBytes(static_cast<std::size_t>(size), static_cast<std::uint32_t>(size));
        return Write(relative, QByteArray::fromRawData(reinterpret_cast<const char*>(noise.data()),
                                                       noise.size()));
    }

    // Contents maps every file below relative (paths relative to it) to its bytes.
    QMap<QString, QByteArray> Contents(const QString& relative = {}) const {
        QMap<QString, QByteArray> contents;
        const QDir root(Path(relative));
        QDirIterator it(root.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (it.hasNext()) {
            const QString path = it.next();
            QFile file(path);
            if (!file.open(QIODevice::ReadOnly)) {
                qFatal("cannot read %s", qPrintable(path));
            }
            contents.insert(root.relativeFilePath(path), file.readAll());
        }
        return contents;
    }

private:
    TempFolder m_folder;
};

} // namespace kelvora::testing
