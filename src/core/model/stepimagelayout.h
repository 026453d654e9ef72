#pragma once

namespace vkm::image {

// Offsets of the step image: the program area of the controller's memory, byte for byte.
constexpr int kTagOffset = 0; // "0106"
constexpr int kAuthorOffset = 4;
constexpr int kAuthorSize = 20;
constexpr int kPasswordOffset = 24;
constexpr int kPasswordSize = 16;
constexpr int kMemoNameOffset = 40;
constexpr int kMemoNameSize = 8;
constexpr int kMemoExtOffset = 48;
constexpr int kMemoExtSize = 3;
constexpr int kHeaderPadSize = 13;
constexpr int kStepsOffset = 64;
constexpr int kStepRecordSize = 22; // two outputs of 5 bytes, four inputs of 3 bytes
constexpr int kOutputRecordSize = 5;
constexpr int kInputRecordSize = 3;
constexpr int kOutputsPerStep = 2;
constexpr int kInputsPerStep = 4;
constexpr int kStepRecords = 32;
constexpr int kRemarksOffset = 768;
constexpr int kRemarkSize = 20;
constexpr int kMemoOffset = 1408;
constexpr int kMemoSize = 496;
constexpr int kImageSize = 1904;

// An output whose flag byte has its upper four bits set is empty: 00 00 F0 00 00.
constexpr unsigned char kEmptyOutputFlag = 0xF0;
// An empty input is relation END with state 3: 00 00 23.
constexpr unsigned char kEmptyInputState = 0x23;
constexpr unsigned char kDisabledBit = 0x10;

inline const char kFormatTag[] = "0106";

} // namespace vkm::image
