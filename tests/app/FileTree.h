#pragma once

// FileTree is the tests' temporary folder seen from Qt, with helpers to write generated
// contents and to read back whole trees for byte-for-byte comparison.
#include "common/TempFolder.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <cstdint>

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

    // WriteNoise writes size bytes that do not compress (a seeded xorshift sequence).
    QString WriteNoise(const QString& relative, qint64 size) const {
        QByteArray bytes(size, Qt::Uninitialized);
        std::uint64_t state = 0x9E3779B97F4A7C15ULL + static_cast<std::uint64_t>(size);
        for (qint64 i = 0; i < size; ++i) {
            state ^= state << 13;
            state ^= state >> 7;
            state ^= state << 17;
            bytes[i] = static_cast<char>(state);
        }
        return Write(relative, bytes);
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
