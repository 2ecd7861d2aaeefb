#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

namespace kelvora::testing {

// LoopbackHttpServer is a small HTTP server on 127.0.0.1 for the mail window's tests. It
// records each request as it arrived, byte for byte, and answers it with a 200 response
// carrying the scripted body, or, when told to stay silent, not at all.
class LoopbackHttpServer : public QObject {
    Q_OBJECT

public:
    explicit LoopbackHttpServer(QByteArray answer, bool silent = false)
        : m_answer(std::move(answer)), m_silent(silent) {
        connect(&m_server, &QTcpServer::newConnection, this, &LoopbackHttpServer::Accept);
        m_server.listen(QHostAddress::LocalHost);
    }

    quint16 Port() const { return m_server.serverPort(); }
    // Requests holds every complete request: the head up to the blank line, then the body.
    const QList<QByteArray>& Requests() const { return m_requests; }

private:
    void Accept() {
        while (QTcpSocket* socket = m_server.nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { Read(socket); });
        }
    }

    void Read(QTcpSocket* socket) {
        QByteArray& received = m_pending[socket];
        received += socket->readAll();
        const qsizetype headEnd = received.indexOf("\r\n\r\n");
        if (headEnd < 0) {
            return;
        }
        const qsizetype bodyStart = headEnd + 4;
        if (received.size() - bodyStart < ContentLength(received.left(headEnd))) {
            return;
        }
        m_requests.append(received);
        m_pending.remove(socket);
        if (m_silent) {
            return;
        }
        socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/html\r\nContent-Length: " +
                      QByteArray::number(m_answer.size()) + "\r\nConnection: close\r\n\r\n" +
                      m_answer);
        socket->disconnectFromHost();
    }

    static qsizetype ContentLength(const QByteArray& head) {
        for (const QByteArray& line : head.split('\n')) {
            if (line.toLower().startsWith("content-length:")) {
                return line.mid(15).trimmed().toLongLong();
            }
        }
        return 0;
    }

    QTcpServer m_server;
    QByteArray m_answer;
    bool m_silent;
    QList<QByteArray> m_requests;
    QHash<QTcpSocket*, QByteArray> m_pending;
};

} // namespace kelvora::testing
