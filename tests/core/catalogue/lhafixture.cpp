#include "lhafixture.h"

namespace vkm::test {

namespace {
quint16 crc16(const QByteArray& bytes) {
    quint16 crc = 0;
    for (char ch : bytes) {
        crc ^= quint8(ch);
        for (int b = 0; b < 8; ++b)
            crc = (crc & 1) ? quint16((crc >> 1) ^ 0xA001) : quint16(crc >> 1);
    }
    return crc;
}

void put16(QByteArray& b, int pos, quint32 v) {
    b[pos] = char(v & 0xFF);
    b[pos + 1] = char((v >> 8) & 0xFF);
}

void put32(QByteArray& b, int pos, quint32 v) {
    for (int i = 0; i < 4; ++i)
        b[pos + i] = char((v >> (8 * i)) & 0xFF);
}

QByteArray extension(char type, const QByteArray& payload) {
    QByteArray e;
    e.append(type);
    e.append(payload);
    e.append(2, '\0'); // size of the next extension, patched by the caller
    return e;
}
} // namespace

QByteArray lhaArchive(const std::vector<LhaMember>& members) {
    QByteArray out;
    for (const LhaMember& m : members) {
        std::vector<QByteArray> exts{extension(0x00, QByteArray(2, '\0')), extension(0x01, m.name)};
        if (!m.dirPart.isEmpty())
            exts.push_back(extension(0x02, m.dirPart));
        QByteArray h(26, '\0');
        put16(h, 24, quint32(exts.front().size()));
        for (std::size_t i = 0; i < exts.size(); ++i) {
            QByteArray e = exts[i];
            put16(e, int(e.size()) - 2, i + 1 < exts.size() ? quint32(exts[i + 1].size()) : 0);
            h.append(e);
        }
        if ((h.size() & 0xFF) == 0)
            h.append('\0');
        put16(h, 0, quint32(h.size()));
        h.replace(2, 5, "-lh0-");
        put32(h, 7, quint32(m.data.size()));
        put32(h, 11, quint32(m.data.size()));
        put32(h, 15, 1700000000u);
        h[19] = 0x20;
        h[20] = 2;
        put16(h, 21, crc16(m.data) ^ (m.wrongCrc ? 0x5A5A : 0));
        h[23] = 'U';
        put16(h, 27, crc16(h));
        out.append(h);
        out.append(m.data);
    }
    out.append('\0');
    return out;
}

} // namespace vkm::test
