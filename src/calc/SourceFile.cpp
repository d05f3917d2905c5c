#include "calc/SourceFile.h"

#include <cstdint>
#include <limits>

#include "calc/LevelImage.h"
#include "calc/SourceTokens.h"
#include "model/Quoted.h"
#include "model/TextOut.h"

namespace shd {

namespace {

// 8 spaces, .db, 13 spaces: every operand starts in column 25.
constexpr std::string_view kData = "        .db             ";
constexpr std::string_view kOrigin = "        .org             9327h";
constexpr char kHexDigits[] = "0123456789ABCDEF";

// Rows 0 to 5 for in-row numbers 8 down to 1, then rows 0 to 5 for 10 and 9.
void PutPictureRows(TextOut& out, const PiecePicture& picture) {
    auto bit = [&](int row, int k) { return static_cast<char>('0' + image::PictureBit(picture.at(10 * row + k))); };
    for (int row = 0; row < 6; ++row) {
        out << kData;
        for (int k = 8; k >= 1; --k) out << bit(row, k);
        out.Line("b");
    }
    for (int row = 0; row < 6; ++row) out << kData << bit(row, 10) << bit(row, 9) << "000000b\r\n";
}

class SourceReader {
public:
    explicit SourceReader(std::string_view text) : fields_(text) {}
    ReadResult Read();

private:
    ReadResult Stop(std::string why) {
        return StoppedRead(std::move(set_), "line " + std::to_string(fields_.LastLine()), std::move(why));
    }

    std::optional<std::string> ReadPicture(PiecePicture& picture, std::optional<std::string_view> inHand);

    source::FieldReader fields_;
    LevelSet set_;
};

std::string NotAValue(std::string_view token) { return Quoted(token) + " is not a value"; }

// Twelve row texts: six for in-row numbers 8 down to 1, six for 10 and 9.
// `inHand` may already hold the first row. Returns why it failed, if it did.
std::optional<std::string> SourceReader::ReadPicture(PiecePicture& picture, std::optional<std::string_view> inHand) {
    for (int i = 0; i < 12; ++i) {
        std::optional<std::string_view> text;
        if (i == 0 && inHand && inHand->size() == 8 && source::CutToEightDigits(*inHand)) text = inHand;
        else text = fields_.GetNextByte();
        if (!text) return "the file ends inside the custom pictures";
        if (text->size() < 8 || !source::CutToEightDigits(text->substr(0, 8)))
            return "the picture row " + Quoted(*text) + " is not eight digits";
        const int row = i % 6;
        if (i < 6) {
            for (int c = 0; c < 8; ++c) picture.at(10 * row + 8 - c) = static_cast<std::uint8_t>((*text)[c] - '0');
        } else {
            picture.at(10 * row + 10) = static_cast<std::uint8_t>((*text)[0] - '0');
            picture.at(10 * row + 9) = static_cast<std::uint8_t>((*text)[1] - '0');
        }
    }
    return std::nullopt;
}

ReadResult SourceReader::Read() {
    auto token = fields_.NextString();
    if (!token) {
        // Nothing has been replaced yet, so the editor keeps its set, as with a wrong origin.
        return StoppedBeforeReplacing("line " + std::to_string(fields_.LastLine()), "the file ends before the origin line");
    }
    if (token->find("9327h") == std::string::npos) return RefusedRead("Not compilable code.");

    // From here the set is replaced: set_ starts as a reset set.
    token = fields_.NextString();
    if (!token) return Stop("the file ends before the game's ID");
    if (const auto s = token->find('S'); s != std::string::npos && token->find('Z', s + 1) != std::string::npos)
        set_.Kind = GameKind::Shardles;

    if (set_.IsShardles()) {
        const auto settings = fields_.GetNextByte();
        if (!settings) return Stop("the file ends before the settings");
        DecodeSettingsDigits(*settings, set_);
    }

    if (!fields_.NextString()) return Stop("the file ends before the title");  // CountOffset, unused

    token = fields_.NextString();
    if (!token) return Stop("the file ends before the title");
    std::string label(*token);
    if (set_.IsShardles())
        for (char& c : label)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    if (label.starts_with("BLOCKD:")) {
        set_.UseCustomShardles = true;
        const std::optional<std::string_view> inHand = source::CutToEightDigits(*token);
        if (auto why = ReadPicture(set_.CustomShardlePicture, inHand)) return Stop(*why);
        if (auto why = ReadPicture(set_.CustomChangerPicture, std::nullopt)) return Stop(*why);
        token = fields_.NextString();
        if (!token) return Stop("the file ends before the title");
    }

    // The title token ends in its closing quote; TitleBackOffset - 1 characters
    // before that are the title.
    std::string_view title = *token;
    title.remove_suffix(1);
    if (!fields_.NextString()) return Stop("the file ends after the title");
    token = fields_.NextString();
    if (!token) return Stop("the file ends before the title's length");
    const auto backOffset = source::GetTokenValue(*token);
    if (!backOffset) return Stop(NotAValue(*token));
    if (*backOffset <= 0) return Stop("the title's length " + std::to_string(*backOffset) + " is below 1");
    const auto keep = static_cast<std::size_t>(*backOffset - 1);
    set_.Title = Bytes(keep >= title.size() ? title : title.substr(title.size() - keep));

    for (int reserved = 0; reserved < 2; ++reserved)
        if (!fields_.NextString()) return Stop("the file ends before the level count");
    token = fields_.NextString();
    if (!token) return Stop("the file ends before the level count");
    const auto count = source::GetTokenValue(*token);
    if (!count) return Stop(NotAValue(*token));
    if (*count < 1 || *count > kMaxLevels)
        return Stop("the level count " + std::to_string(*count) + " is not 1 to 255");
    MakeLevels(set_, static_cast<int>(*count));

    const bool shardles = set_.IsShardles();
    for (int level = 1; level <= *count; ++level) {
        const std::string ends = "the file ends inside level " + std::to_string(level);
        LevelLayout& layout = set_.Layout(level);
        for (std::size_t pair = 0; pair < layout.Cells.size() / 2; ++pair) {
            token = fields_.NextString();
            if (token && source::IsLevelLabel(*token)) token = fields_.NextString();
            if (!token) return Stop(ends);
            const auto value = source::GetTokenValue(*token);
            if (!value) return Stop(NotAValue(*token));
            if (*value < 0 || *value > 255)
                return Stop("the grid value " + std::to_string(*value) + " is outside 0 to 255");
            layout.Cells[2 * pair] = static_cast<std::uint8_t>(*value / 16);
            layout.Cells[2 * pair + 1] = static_cast<std::uint8_t>(*value % 16);
        }
        // The numbers are read straight from the file, not as tokens.
        if (shardles) {
            const auto first = fields_.ReadField();
            if (!first) return Stop(ends);
            const auto ballX = source::DecimalTokenValue(*first);
            if (!ballX) return Stop(NotAValue(*first));
            layout.BallX = static_cast<std::int16_t>(*ballX);
            for (std::int16_t* field : {&layout.BallY, &layout.BlockCount, &layout.LastBlockCount}) {
                const auto text = fields_.ReadField();
                if (!text) return Stop(ends);
                const long number = source::FieldNumber(*text);
                if (number < std::numeric_limits<std::int16_t>::min() ||
                    number > std::numeric_limits<std::int16_t>::max())
                    return Stop("the number " + Quoted(*text) + " is out of range");
                *field = static_cast<std::int16_t>(number);
            }
        } else {
            const auto line = fields_.ReadLine();
            if (!line) return Stop(ends);
            const auto blocks = source::DecimalTokenValue(*line);
            if (!blocks) return Stop(NotAValue(*line));
            layout.BlockCount = static_cast<std::int16_t>(*blocks);
        }
    }
    return ReadResult{std::move(set_), {}};
}

}  // namespace

WriteResult WriteSourceFile(const LevelSet& set) {
    if (auto problem = image::Unexportable(set)) return RefusedWrite(*problem);

    const bool shardles = set.IsShardles();
    // A level is at most its label, ten rows of data and one of numbers.
    TextOut out(1536 + set.Title.size() + static_cast<std::size_t>(set.LevelCount()) * 512);
    auto data = [&out]() -> TextOut& { return out << kData; };

    out.Line(kOrigin);
    data().Line(shardles ? "\"Shd1KZ\"" : "\"TL1KZ\"");
    if (shardles) {
        const int settings = *EncodeSettingsByte(set.BonusClock, set.ExtraLifePoints, set.UseWrapAround,
                                                 set.ArrowBlocksBreakable);
        data() << '%';
        for (int bit = 7; bit >= 0; --bit) out << ((settings >> bit & 1) ? '1' : '0');
        out.Line();
    }
    data().Number(image::CountOffset(set)).Line();
    if (image::CarriesPictures(set)) {
        out.Line("blockD:");
        PutPictureRows(out, set.CustomShardlePicture);
        out.Line("blockE:");
        PutPictureRows(out, set.CustomChangerPicture);
    }
    data() << '"' << set.Title;
    out.Line("\",$00");
    data().Number(static_cast<long>(set.Title.size()) + 1).Line();  // TitleBackOffset
    data().Line("$00,$00");
    data().Number(set.LevelCount()).Line();
    out.Line();

    auto lowByte = [](std::int16_t value) { return static_cast<long>(value & 0xFF); };
    for (int level = 1; level <= set.LevelCount(); ++level) {
        const LevelLayout& layout = set.Layout(level);
        out << "level";
        out.Number(level).Line(":");
        for (int row = 0; row < RowCount(set.Kind); ++row) {
            data();
            for (int k = 0; k < 4; ++k) {
                const std::size_t cell = static_cast<std::size_t>(row * kColumns + 2 * k);
                if (k > 0) out << ',';
                out << '$' << kHexDigits[layout.Cells[cell] & 0x0F] << kHexDigits[layout.Cells[cell + 1] & 0x0F];
            }
            out.Line();
        }
        if (shardles) {
            data().Number(lowByte(layout.BallX)) << ',';
            out.Number(lowByte(layout.BallY)) << ',';
            out.Number(lowByte(layout.BlockCount)) << ',';
            out.Number(lowByte(layout.LastBlockCount)).Line();
        } else {
            data().Number(lowByte(layout.BlockCount)).Line();
        }
        out.Line();
    }
    out.Line(".end");
    out.Line("END");
    return Written(out.Take());
}

ReadResult ReadSourceFile(const std::string& bytes) { return SourceReader(bytes).Read(); }

}  // namespace shd
