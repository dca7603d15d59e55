#include "app/SecondStart.h"

#include "platform/FileLock.h"
#include "platform/QtText.h"

#include <QDir>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>

namespace tarn {

namespace {

constexpr int kPatience = 1000;     // milliseconds for the running window to answer
constexpr int kBusyPatience = 5000; // while it is known to live

QString ServerName() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
    return (folder.isEmpty() ? QDir::tempPath() : folder) + QStringLiteral("/tarn-view-window");
}

} // namespace

SecondStart::SecondStart()
    : m_lock(std::make_unique<FileLock>(FromQt(ServerName() + QStringLiteral(".lock")))) {}
SecondStart::~SecondStart() = default;

bool SecondStart::HandOver(const std::string& path) {
    const int patience = m_lock->Take() ? kPatience : kBusyPatience;
    QLocalSocket socket;
    socket.connectToServer(ServerName());
    if (!socket.waitForConnected(patience)) return false;
    socket.write(QByteArray::fromStdString(path) + '\0');
    // Only an answer says that the window lives and has taken it.
    return socket.waitForBytesWritten(patience) && socket.waitForReadyRead(patience);
}

void SecondStart::Listen(std::function<void(const std::string&)> open) {
    if (!m_lock->Take()) return; // its holder keeps the name, and answers again one day
    m_server = std::make_unique<QLocalServer>();
    m_server->setSocketOptions(QLocalServer::UserAccessOption);
    QLocalServer::removeServer(ServerName()); // left behind by a crash
    m_server->listen(ServerName());
    QObject::connect(m_server.get(), &QLocalServer::newConnection, [this, open = std::move(open)] {
        QLocalSocket* socket = m_server->nextPendingConnection();
        QObject::connect(socket, &QLocalSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QLocalSocket::readyRead, socket, [socket, open] {
            const QByteArray text = socket->readAll();
            socket->write("1");
            socket->flush();
            open(text.left(text.indexOf('\0')).toStdString());
        });
    });
}

} // namespace tarn
