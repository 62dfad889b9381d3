// Runs a target where there is no libFuzzer: over all seeds, and over changed ones until the time is up. Each
// input is made from the number that the driver was given and its own, so that one that ends the process is
// told by these numbers and can be run again.
//
// usage: fuzz_... SEEDS [--seconds S] [--seed N] [--only I]
#include <sys/resource.h>
#include <unistd.h>

#include <QCommandLineParser>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <csignal>
#include <cstdio>
#include <random>

#include "fuzz/Target.h"

namespace {

constexpr unsigned kMostSeconds = 20;  // for one input
constexpr qsizetype kMostBytes = 2'000'000;

long long present = 0;  // the number of the input in hand

void TellAndEnd(int signal) {
  char text[100];
  const int size = std::snprintf(text, sizeof text, "\ninput %lld ended by signal %d\n", present, signal);
  if (::write(STDERR_FILENO, text, static_cast<std::size_t>(size)) < 0) ::_exit(3);
  ::_exit(2);
}

class Mutator {
 public:
  Mutator(const QList<QByteArray>& seeds, unsigned seed, long long number)
      : seeds_(seeds), random_(seed + 1000003U * static_cast<unsigned>(number)) {}

  QByteArray Make() {
    QByteArray bytes = seeds_[Below(seeds_.size())];
    for (qsizetype i = 0, changes = 1 + Below(8); i < changes && !bytes.isEmpty(); ++i) Change(bytes);
    return bytes.left(kMostBytes);
  }

 private:
  qsizetype Below(qsizetype most) { return static_cast<qsizetype>(random_()) % most; }

  void Change(QByteArray& bytes) {
    static const char* const kNumbers[] = {"\0\0\0\0", "\xff\xff\xff\xff", "\xff\xff\xff\x7f", "\0\0\0\x80",
                                           "\xff\x7f\xff\x7f"};
    const qsizetype at = Below(bytes.size());
    const qsizetype length = 1 + Below(std::min<qsizetype>(bytes.size() - at, 64));
    switch (Below(8)) {
      case 0:
      case 1:
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << Below(8)));
        break;
      case 2:
        bytes[at] = static_cast<char>(random_());
        break;
      case 3: {
        const qsizetype width = std::min<qsizetype>(bytes.size() - at, Below(2) == 0 ? 2 : 4);
        bytes.replace(at, width, QByteArray(kNumbers[Below(5)], 4).left(width));
        break;
      }
      case 4:
        bytes.remove(at, length);
        break;
      case 5:
        bytes.insert(Below(bytes.size()), bytes.mid(at, length));
        break;
      case 6:
        bytes.truncate(at);
        break;
      default: {
        const QByteArray& other = seeds_[Below(seeds_.size())];
        if (!other.isEmpty()) bytes.replace(at, length, other.mid(Below(other.size()), length));
      }
    }
  }

  const QList<QByteArray>& seeds_;
  std::mt19937 random_;
};

QList<QByteArray> ReadSeeds(const QString& folder) {
  QList<QByteArray> seeds;
  for (const QFileInfo& info : QDir(folder).entryInfoList(QDir::Files, QDir::Name)) {
    QFile file(info.filePath());
    if (file.open(QIODevice::ReadOnly)) seeds.append(file.readAll());
  }
  return seeds;
}

void Run(const QByteArray& bytes) {
  ::alarm(kMostSeconds);
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                         static_cast<std::size_t>(bytes.size()));
  ::alarm(0);
}

}  // namespace

int main(int argc, char** argv) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments.append(QString::fromLocal8Bit(argv[i]));
  QCommandLineParser parser;
  parser.addOptions({{"seconds", "Time to run.", "S", "3"},
                     {"seed", "Number of the run.", "N", "1"},
                     {"only", "Runs one changed input.", "I"}});
  if (!parser.parse(arguments) || parser.positionalArguments().size() != 1) {
    std::fprintf(stderr, "usage: %s SEEDS [--seconds S] [--seed N] [--only I]\n", argv[0]);
    return 1;
  }
  const QList<QByteArray> seeds = ReadSeeds(parser.positionalArguments().constFirst());
  if (seeds.isEmpty()) {
    std::fprintf(stderr, "no seeds\n");
    return 1;
  }
  for (const int signal : {SIGSEGV, SIGABRT, SIGFPE, SIGBUS, SIGALRM}) std::signal(signal, TellAndEnd);
  LLVMFuzzerInitialize(&argc, &argv);
  const unsigned seed = parser.value("seed").toUInt();
  if (parser.isSet("only")) {
    present = parser.value("only").toLongLong();
    Run(Mutator(seeds, seed, present).Make());
    return 0;
  }
  QElapsedTimer timer;
  timer.start();
  for (const QByteArray& bytes : seeds) Run(bytes);
  const qint64 most = parser.value("seconds").toLongLong() * 1000;
  for (present = 1; timer.elapsed() < most; ++present) Run(Mutator(seeds, seed, present).Make());
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  std::printf("%lld seeds and %lld changed inputs of seed %u, none failed; at most %ld MB\n",
              static_cast<long long>(seeds.size()), present - 1, seed, usage.ru_maxrss / 1024);
  return 0;
}
