#pragma once

#include <QByteArray>
#include <vector>

namespace vkm::test {

// Builds LHA archives (level-2 headers, stored members) with member names exactly as
// given, folder parts and all: the hostile archives that the packer of the build never
// makes. dirPart, when not empty, goes into the directory extended header (LHA separates
// its folders with 0xFF there). wrongCrc stores a data CRC that does not match the data,
// as a member damaged after packing has.
struct LhaMember {
    QByteArray name;
    QByteArray data;
    QByteArray dirPart = {};
    bool wrongCrc = false;
};
QByteArray lhaArchive(const std::vector<LhaMember>& members);

} // namespace vkm::test
