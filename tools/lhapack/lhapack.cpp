// lhapack: packs files into an LHA archive, the container the sewing machine's setting
// archive "VKM.e" has always used.
//
//   lhapack OUT.lzh FILE...
//
// Members are stored (method -lh0-) with level-2 headers: the header size, the method, the
// sizes, the time stamp, the data CRC and a header CRC, and the name as an extended header.
// Only base names are stored, so that the archive unpacks flat. The archive ends with a
// zero byte. Plain C++17 so that it builds before anything else of the project.
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace {

using Bytes = std::vector<unsigned char>;

// CRC-16 of LHA/ARC: reflected polynomial 0xA001, initial value 0.
uint16_t crc16(const unsigned char* data, std::size_t n, uint16_t crc = 0) {
    for (std::size_t i = 0; i < n; ++i) {
        crc ^= data[i];
        for (int b = 0; b < 8; ++b)
            crc = (crc & 1) ? uint16_t((crc >> 1) ^ 0xA001) : uint16_t(crc >> 1);
    }
    return crc;
}

void put16(Bytes& out, std::size_t pos, uint32_t v) {
    out[pos] = uint8_t(v & 0xFF);
    out[pos + 1] = uint8_t((v >> 8) & 0xFF);
}

void put32(Bytes& out, std::size_t pos, uint32_t v) {
    for (int i = 0; i < 4; ++i)
        out[pos + std::size_t(i)] = uint8_t((v >> (8 * i)) & 0xFF);
}

// Modification time as Unix seconds; SOURCE_DATE_EPOCH wins so that builds repeat.
uint32_t stampOf(const std::filesystem::path& p) {
    if (const char* epoch = std::getenv("SOURCE_DATE_EPOCH"))
        return uint32_t(std::strtoul(epoch, nullptr, 10));
    std::error_code ec;
    const auto ft = std::filesystem::last_write_time(p, ec);
    if (ec)
        return 0;
    const auto sys =
        std::chrono::system_clock::now() + std::chrono::duration_cast<std::chrono::system_clock::duration>(
                                               ft - std::filesystem::file_time_type::clock::now());
    const auto secs = std::chrono::duration_cast<std::chrono::seconds>(sys.time_since_epoch()).count();
    return secs < 0 ? 0u : uint32_t(secs);
}

// The level-2 header of one stored member.
Bytes header(const std::string& name, const Bytes& data, uint32_t stamp) {
    const std::size_t fixed = 26;                // up to and including the first "next size" field
    const std::size_t crcExt = 5;                // type, CRC, next size
    const std::size_t nameExt = name.size() + 3; // type, name, next size
    std::size_t total = fixed + crcExt + nameExt;
    // A header whose size has a zero low byte would read as the end mark; LHA pads it.
    if ((total & 0xFF) == 0)
        ++total;
    Bytes h(total, 0);
    put16(h, 0, uint32_t(total));
    const char method[] = "-lh0-";
    for (int i = 0; i < 5; ++i)
        h[2 + std::size_t(i)] = uint8_t(method[i]);
    put32(h, 7, uint32_t(data.size()));
    put32(h, 11, uint32_t(data.size()));
    put32(h, 15, stamp);
    h[19] = 0x20; // archive attribute, as MS-DOS packers set it
    h[20] = 2;    // header level
    put16(h, 21, crc16(data.data(), data.size()));
    h[23] = 'U';
    put16(h, 24, uint32_t(crcExt));
    std::size_t p = fixed;
    h[p] = 0x00; // header CRC, filled in below
    put16(h, p + 3, uint32_t(nameExt));
    p += crcExt;
    h[p] = 0x01; // file name
    for (std::size_t i = 0; i < name.size(); ++i)
        h[p + 1 + i] = uint8_t(name[i]);
    put16(h, p + 1 + name.size(), 0);
    put16(h, fixed + 1, crc16(h.data(), h.size()));
    return h;
}

bool readFile(const std::filesystem::path& p, Bytes& out) {
    std::ifstream in(p, std::ios::binary);
    if (!in)
        return false;
    out.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    return !in.bad();
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: lhapack OUT.lzh FILE...\n");
        return 2;
    }
    Bytes archive;
    for (int i = 2; i < argc; ++i) {
        const std::filesystem::path path(argv[i]);
        Bytes data;
        if (!readFile(path, data)) {
            std::fprintf(stderr, "lhapack: cannot read %s\n", argv[i]);
            return 1;
        }
        const std::string name = path.filename().string();
        if (name.empty() || name.size() > 0xFF00 || data.size() > 0xFFFFFFFFu) {
            std::fprintf(stderr, "lhapack: cannot store %s\n", argv[i]);
            return 1;
        }
        const Bytes h = header(name, data, stampOf(path));
        archive.insert(archive.end(), h.begin(), h.end());
        archive.insert(archive.end(), data.begin(), data.end());
    }
    archive.push_back(0); // end mark
    // Written under a temporary name and renamed, so that a failed run never leaves a
    // half archive that the build would take for a finished one.
    const std::string out = argv[1];
    const std::string tmp = out + ".part";
    {
        std::ofstream f(tmp, std::ios::binary | std::ios::trunc);
        f.write(reinterpret_cast<const char*>(archive.data()), std::streamsize(archive.size()));
        f.close();
        if (!f) {
            std::fprintf(stderr, "lhapack: cannot write %s\n", tmp.c_str());
            std::filesystem::remove(tmp);
            return 1;
        }
    }
    std::error_code ec;
    std::filesystem::rename(tmp, out, ec);
    if (ec) {
        std::fprintf(stderr, "lhapack: cannot write %s\n", out.c_str());
        std::filesystem::remove(tmp, ec);
        return 1;
    }
    return 0;
}
