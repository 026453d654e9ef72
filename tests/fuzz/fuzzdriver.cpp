// Replays a corpus folder and then feeds mutated copies of its files (bit flips,
// truncations, insertions, random bytes) to the target, with a fixed seed so that a
// failure repeats. Usage: fuzz_<name> CORPUS_DIR [ITERATIONS]
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <cstdint>
#include <cstdio>
#include <random>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace {
void runOne(const QByteArray& bytes) {
    LLVMFuzzerTestOneInput(reinterpret_cast<const uint8_t*>(bytes.constData()), size_t(bytes.size()));
}

QByteArray mutate(QByteArray b, std::mt19937& rng) {
    std::uniform_int_distribution<int> kind(0, 5);
    std::uniform_int_distribution<int> byte(0, 255);
    const int rounds = 1 + int(rng() % 8);
    for (int r = 0; r < rounds; ++r) {
        const int n = int(b.size());
        auto pos = [&] { return n == 0 ? 0 : int(rng() % uint32_t(n)); };
        switch (kind(rng)) {
        case 0:
            if (n)
                b[pos()] = char(b[pos()] ^ (1 << (rng() % 8)));
            break;
        case 1:
            if (n)
                b.truncate(pos());
            break;
        case 2:
            b.insert(pos(), char(byte(rng)));
            break;
        case 3:
            if (n)
                b[pos()] = char(byte(rng));
            break;
        case 4:
            if (n > 2) {
                const int p = pos();
                b.insert(p, b.mid(pos(), int(rng() % 64)));
            }
            break;
        default: {
            QByteArray junk;
            const int len = int(rng() % 64);
            for (int i = 0; i < len; ++i)
                junk.append(char(byte(rng)));
            b.insert(pos(), junk);
        }
        }
    }
    return b;
}
} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    const QString corpusDir = argc > 1 ? QString::fromLocal8Bit(argv[1]) : QString();
    const int iterations = argc > 2 ? std::atoi(argv[2]) : 1000;
    std::vector<QByteArray> corpus;
    const auto files = QDir(corpusDir).entryInfoList(QDir::Files, QDir::Name);
    for (const auto& fi : files) {
        QFile f(fi.absoluteFilePath());
        if (f.open(QIODevice::ReadOnly))
            corpus.push_back(f.readAll());
    }
    corpus.push_back(QByteArray());
    for (const auto& c : corpus)
        runOne(c);
    std::mt19937 rng(20261122u);
    for (int i = 0; i < iterations; ++i)
        runOne(mutate(corpus[std::size_t(i) % corpus.size()], rng));
    std::printf("%zu corpus files and %d mutated inputs ran without a fault\n", corpus.size(), iterations);
    return 0;
}
