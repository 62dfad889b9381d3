#include "forms/OpenedFiles.h"

#include <QApplication>
#include <QCryptographicHash>
#include <QDataStream>
#include <QDir>
#include <QFileInfo>
#include <QLocalServer>
#include <QLocalSocket>
#include <QStandardPaths>
#include <QTimer>
#include <QWidget>
#include <deque>

#include "base/App.h"
#include "base/Files.h"

namespace orv {
namespace {

constexpr int kPatience = 5000;       // milliseconds that an answer may take
constexpr int kNextLook = 200;        // until a waiting file looks again whether a dialog is there
constexpr qint64 kMostBytes = 65536;  // of what is sent
constexpr int kMostPeers = 20;        // that are talked to at once
constexpr quint32 kRequest = 0x4F525601;
// The file goes over only when both know that the other is there, so that a process that didn't answer in
// time doesn't come up with a file that the user has given up on.
constexpr char kReady = 'R';
constexpr char kTakeIt = 'T';

const char* const kToken = "XDG_ACTIVATION_TOKEN";  // a desktop's leave to come to the front

// Empty where the system has no folder that is the user's alone.
QString Folder() {
  const QString own = QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation);
  return own.isEmpty() ? own : JoinPath(own, App::Running().package_name);
}

QString NameFor(const QString& works_on) {
  const QString path = QFileInfo(works_on).canonicalFilePath();
  const QByteArray digest = QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha256);
  return QString::fromLatin1(digest.toHex().left(20));
}

// Those of one thing, or of all, the youngest first.
QFileInfoList Sockets(const QString& name) {
  return QDir(Folder()).entryInfoList({name + QStringLiteral("-*.socket")}, QDir::System | QDir::Files,
                                      QDir::Time);
}

// False where nobody listens any more; what a process that was killed has left is removed then.
bool Connect(QLocalSocket& socket, const QString& path) {
  socket.connectToServer(path);
  if (socket.waitForConnected(kPatience)) return true;
  if (socket.error() == QLocalSocket::ConnectionRefusedError) QLocalServer::removeServer(path);
  return false;
}

bool WaitForByte(QLocalSocket& socket) {
  return socket.bytesAvailable() > 0 || socket.waitForReadyRead(kPatience);
}

bool Offer(QLocalSocket& socket, const QString& file) {
  QDataStream out(&socket);
  out << kRequest << file << qgetenv(kToken);
  socket.flush();
  char answer = 0;
  if (!WaitForByte(socket) || !socket.getChar(&answer) || answer != kReady) return false;
  socket.putChar(kTakeIt);
  // The other side hangs up when it has it.
  return socket.state() == QLocalSocket::UnconnectedState || socket.waitForDisconnected(kPatience);
}

bool DialogIsOpen() {
  return QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr;
}

// One process that hands a file over.
class Peer : public QObject {
 public:
  Peer(QLocalSocket* socket, QObject* parent, std::function<void(const QString&)> take)
      : QObject(parent), socket_(socket), take_(std::move(take)) {
    socket->setParent(this);
    socket->setReadBufferSize(kMostBytes);
    connect(socket, &QLocalSocket::readyRead, this, [this] { Read(); });
    connect(socket, &QLocalSocket::disconnected, this, &QObject::deleteLater);
    QTimer::singleShot(2 * kPatience, this, &QObject::deleteLater);
    Read();
  }

 private:
  void Read() {
    if (file_.isEmpty() && !ReadRequest()) return;
    char answer = 0;
    if (!socket_->getChar(&answer)) return;
    if (answer == kTakeIt) {
      if (!token_.isEmpty()) qputenv(kToken, token_);
      take_(std::exchange(file_, {}));
    }
    socket_->disconnectFromServer();
  }

  // False while something of it is on its way.
  bool ReadRequest() {
    QDataStream in(socket_);
    in.startTransaction();
    quint32 request = 0;
    in >> request >> file_ >> token_;
    const bool whole = in.commitTransaction();
    const bool wrong =
        whole ? request != kRequest || file_.isEmpty()
              : in.status() == QDataStream::ReadCorruptData || socket_->bytesAvailable() >= kMostBytes;
    if (wrong) socket_->abort();
    if (wrong || !whole) {
      file_.clear();
      return false;
    }
    socket_->putChar(kReady);
    return true;
  }

  QLocalSocket* socket_;
  std::function<void(const QString&)> take_;
  QString file_;
  QByteArray token_;
};

}  // namespace

struct OpenedFiles::Impl {
  QLocalServer server;
  QTimer look;
  std::deque<QString> waiting;
  std::function<void(const QString&)> open;

  void TakePeers() {
    while (QLocalSocket* const socket = server.nextPendingConnection()) {
      if (server.findChildren<Peer*>(QString(), Qt::FindDirectChildrenOnly).size() >= kMostPeers) {
        delete socket;
        continue;
      }
      new Peer(socket, &server, [this](const QString& file) {
        waiting.push_back(file);
        if (QWidget* const dialog = QApplication::activeModalWidget()) {
          dialog->raise();
          dialog->activateWindow();
        }
        look.start(0);
      });
    }
  }

  void OpenNext() {
    if (waiting.empty()) return look.stop();
    if (DialogIsOpen()) return look.start(kNextLook);
    const QString file = waiting.front();
    waiting.pop_front();
    open(file);
  }
};

OpenedFiles::OpenedFiles(const QString& works_on, std::function<void(const QString&)> open)
    : impl_(std::make_unique<Impl>()) {
  impl_->open = std::move(open);
  QObject::connect(&impl_->look, &QTimer::timeout, &impl_->look, [this] { impl_->OpenNext(); });
  if (Folder().isEmpty() || !QDir().mkpath(Folder())) return;
  for (const QFileInfo& socket : Sockets(QStringLiteral("*"))) {
    QLocalSocket other;
    Connect(other, socket.filePath());
  }
  QObject::connect(&impl_->server, &QLocalServer::newConnection, &impl_->server,
                   [this] { impl_->TakePeers(); });
  impl_->server.setSocketOptions(QLocalServer::UserAccessOption);
  const QString path =
      JoinPath(Folder(),
               QStringLiteral("%1-%2.socket").arg(NameFor(works_on)).arg(QCoreApplication::applicationPid()));
  QLocalServer::removeServer(path);
  impl_->server.listen(path);
}

OpenedFiles::~OpenedFiles() = default;

HandedOver HandFileOver(const QString& works_on, const QString& file) {
  HandedOver result = HandedOver::NobodyThere;
  if (Folder().isEmpty()) return result;
  for (const QFileInfo& path : Sockets(NameFor(works_on))) {
    QLocalSocket socket;
    if (!Connect(socket, path.filePath())) continue;
    if (Offer(socket, file)) return HandedOver::Taken;
    result = HandedOver::NoAnswer;
  }
  return result;
}

}  // namespace orv
