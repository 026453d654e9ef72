#pragma once

namespace vkm::memmap {

// The controller keeps its settings in 8192 bytes, addressed 0x0000 to 0x1FFF. These are
// the only stretches the editor reads or writes.
constexpr int kMemorySize = 0x2000;

// Customisation area: which function each customisable terminal has.
constexpr int kCustomStart = 0x0000;
constexpr int kCustomSize = 768;
// Machine identification bytes, inside the customisation area (read by the machine check).
constexpr int kMachineIdAddress = 0x0100;
constexpr int kMachineIdSize = 3;
// A customisation write sends 0x0000 .. 0x1A7F (its last record is the one for 0x1A78).
constexpr int kCustomWriteEnd = 0x1A80;

// The step image is split over two stretches: bytes 0..767 at 0x0300, bytes 768..1903
// at 0x1B00.
constexpr int kStepLowAddress = 0x0300;
constexpr int kStepLowSize = 768;
constexpr int kStepHighAddress = 0x1B00;
constexpr int kStepHighSize = 1136;
constexpr int kStepImageBytes = kStepLowSize + kStepHighSize; // 1904

// One W record: "W", 4 address digits, 16 data digits, 2 checksum digits.
constexpr int kRecordLength = 23;
constexpr int kRecordDataBytes = 8;
// Records of a step image's transfer text: 96 low + 142 high.
constexpr int kStepRecordCount = kStepImageBytes / kRecordDataBytes; // 238

// Machine address of step image byte n (0..1903).
constexpr int stepImageAddress(int offset) {
    return offset < kStepLowSize ? kStepLowAddress + offset : kStepHighAddress + (offset - kStepLowSize);
}

} // namespace vkm::memmap
