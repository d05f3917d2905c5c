#include "calc/ProgramFile.h"

#include <cstdint>
#include <optional>
#include <span>

#include "calc/LevelImage.h"
#include "model/Quoted.h"

namespace shd {

namespace {

constexpr std::string_view kComment = "Rovak's Shardles & Tiltbash Level Editor";
constexpr std::size_t kDataSectionOffset = 55;
constexpr int kProtectedProgramType = 0x06;
constexpr int kPictureThreshold = 30;

void PutWord(std::string& out, std::size_t value) {
    out.push_back(static_cast<char>(value & 0xFF));
    out.push_back(static_cast<char>((value >> 8) & 0xFF));
}

// Reads the image out of a program file one byte at a time, as the layout
// says, and never past the end: the first missing byte ends the read.
class ImageReader {
public:
    explicit ImageReader(std::string_view bytes) : bytes_(bytes) {}

    ReadResult Read();

private:
    std::optional<std::uint8_t> At(std::size_t offset) const {
        if (offset >= bytes_.size()) return std::nullopt;
        return static_cast<std::uint8_t>(bytes_[offset]);
    }

    ReadResult Stop(std::size_t offset, std::string why) {
        return StoppedRead(std::move(set_), "byte " + std::to_string(offset), std::move(why));
    }

    bool LayoutFits(std::size_t countOffsetAt, std::uint8_t countOffset, std::size_t titleStart) const;
    bool PicturesFollow(std::size_t countOffsetAt, std::uint8_t countOffset) const;
    void TakePictureByte(int index, std::uint8_t byte);

    std::string_view bytes_;
    LevelSet set_;
};

// Whether CountOffset puts the title's 0x00 and a matching TitleBackOffset
// where a title starting at `titleStart` would have them.
bool ImageReader::LayoutFits(std::size_t countOffsetAt, std::uint8_t countOffset,
                             std::size_t titleStart) const {
    const std::size_t countAt = countOffsetAt + countOffset;
    if (countAt < titleStart + 4) return false;
    const std::size_t terminatorAt = countAt - 4;
    const auto terminator = At(terminatorAt);
    const auto backOffset = At(terminatorAt + 1);
    if (!terminator || !backOffset || *terminator != 0) return false;
    if (*backOffset != terminatorAt - titleStart + 1) return false;
    return bytes_.substr(titleStart, terminatorAt - titleStart).find('\0') == std::string_view::npos;
}

// Titles of 0 or 1 characters with pictures give a CountOffset of 29 or 30,
// below the old threshold; the layout that fits decides, the threshold only
// when both (or neither) fit.
bool ImageReader::PicturesFollow(std::size_t countOffsetAt, std::uint8_t countOffset) const {
    const std::size_t titleStart = countOffsetAt + 1;
    const bool without = LayoutFits(countOffsetAt, countOffset, titleStart);
    const bool with = LayoutFits(countOffsetAt, countOffset, titleStart + image::kPictureBytes);
    if (with != without) return with;
    return countOffset > kPictureThreshold;
}

// Picture byte `index` (0 to 23): shardle first, changer second; in each, six
// bytes for in-row numbers 1 to 8, then six for 10 and 9 in the top bits.
void ImageReader::TakePictureByte(int index, std::uint8_t byte) {
    PiecePicture& picture = index < 12 ? set_.CustomShardlePicture : set_.CustomChangerPicture;
    const int within = index % 12;
    if (within < 6) {
        for (int k = 1; k <= 8; ++k)
            if (byte >> (k - 1) & 1) picture.at(10 * within + k) = 1;
    } else {
        const int row = within - 6;
        if (byte & 0x80) picture.at(10 * row + 10) = 1;
        if (byte & 0x40) picture.at(10 * row + 9) = 1;
    }
}

ReadResult ImageReader::Read() {
    // Until the game is known nothing of the set is replaced.
    auto before = [](std::size_t offset, const char* why) { return StoppedBeforeReplacing("byte " + std::to_string(offset), why); };
    const auto kindByte = At(kProgramImageOffset);
    if (!kindByte) return before(kProgramImageOffset, "the file ends before the level image");

    // Both IDs end in their only Z.
    std::size_t pos = kProgramImageOffset + 1;
    for (;;) {
        const auto byte = At(pos);
        if (!byte) return before(pos, "no Z ends the game's ID");
        ++pos;
        if (*byte == 'Z') break;
    }

    if (*kindByte == 'S') {
        set_.Kind = GameKind::Shardles;
        const auto settings = At(pos);
        if (!settings) return Stop(pos, "the file ends before the settings byte");
        ++pos;
        DecodeSettingsByte(*settings, set_);
    } else if (*kindByte != 'T') {
        return RefusedRead("This is not a Shardles or Tiltbash file.");
    }

    const std::size_t countOffsetAt = pos;
    const auto countOffset = At(pos);
    if (!countOffset) return Stop(pos, "the file ends before the title");
    ++pos;

    if (set_.IsShardles() && PicturesFollow(countOffsetAt, *countOffset)) {
        set_.UseCustomShardles = true;
        for (int i = 0; i < image::kPictureBytes; ++i, ++pos) {
            const auto byte = At(pos);
            if (!byte) return Stop(pos, "the file ends inside the custom pictures");
            TakePictureByte(i, *byte);
        }
    }

    const std::size_t terminatorAt = bytes_.find('\0', pos);
    if (terminatorAt == std::string_view::npos) return Stop(bytes_.size(), "the title has no 0x00 after it");
    set_.Title = Bytes(bytes_.substr(pos, terminatorAt - pos));

    // TitleBackOffset and the two reserved bytes stand between.
    const std::size_t countAt = terminatorAt + 4;
    const auto levelCount = At(countAt);
    if (!levelCount) return Stop(countAt, "the file ends before the level count");
    if (*levelCount == 0) return Stop(countAt, "the level count is 0");
    MakeLevels(set_, *levelCount);
    pos = countAt + 1;

    const bool shardles = set_.IsShardles();
    for (int level = 1; level <= *levelCount; ++level) {
        LevelLayout& layout = set_.Layout(level);
        auto next = [&]() -> std::optional<std::uint8_t> {
            const auto byte = At(pos);
            if (byte) ++pos;
            return byte;
        };
        const std::string ends = "the file ends inside level " + std::to_string(level);
        for (std::size_t pair = 0; pair < layout.Cells.size() / 2; ++pair) {
            const auto byte = next();
            if (!byte) return Stop(pos, ends);
            layout.Cells[2 * pair] = static_cast<std::uint8_t>(*byte >> 4);
            layout.Cells[2 * pair + 1] = static_cast<std::uint8_t>(*byte & 0x0F);
        }
        std::int16_t* shardlesNumbers[] = {&layout.BallX, &layout.BallY, &layout.BlockCount,
                                           &layout.LastBlockCount};
        std::int16_t* tiltbashNumbers[] = {&layout.BlockCount};
        for (std::int16_t* field : shardles ? std::span<std::int16_t*>(shardlesNumbers)
                                            : std::span<std::int16_t*>(tiltbashNumbers)) {
            const auto byte = next();
            if (!byte) return Stop(pos, ends);
            *field = *byte;
        }
    }
    return ReadResult{std::move(set_), {}};
}

}  // namespace

WriteResult WriteProgramFile(const LevelSet& set, std::string_view calculatorName) {
    if (calculatorName.size() > 8)
        return RefusedWrite("The calculator name " + Quoted(calculatorName) + " is longer than 8 characters.");
    WriteResult image = BuildLevelImage(set);
    if (!image.ok) return image;
    const std::size_t n = image.bytes.size();

    std::string out;
    out.reserve(74 + n);
    out += "**TI83**";
    out += std::string_view("\x1A\x0A\x00", 3);
    out += kComment;
    out.append(42 - kComment.size(), '\0');
    PutWord(out, n + 17);  // data section up to the checksum
    PutWord(out, 11);      // variable header length
    PutWord(out, n + 2);
    out.push_back(static_cast<char>(kProtectedProgramType));
    out += calculatorName;
    out.append(8 - calculatorName.size(), '\0');
    PutWord(out, n + 2);
    PutWord(out, n);
    out += image.bytes;

    unsigned checksum = 0;
    for (std::size_t i = kDataSectionOffset; i < out.size(); ++i) checksum += static_cast<std::uint8_t>(out[i]);
    PutWord(out, checksum & 0xFFFF);
    return Written(std::move(out));
}

ReadResult ReadProgramFile(const std::string& bytes) { return ImageReader(bytes).Read(); }

}  // namespace shd
