#include "calc/SourceFile.h"

#include <cstdint>
#include <limits>

#include "calc/LevelImage.h"
#include "calc/SourceTokens.h"

namespace shd {

namespace {

// 8 spaces, .db, 13 spaces: every operand starts in column 25.
constexpr std::string_view kData = "        .db             ";
constexpr std::string_view kOrigin = "        .org             9327h";
constexpr char kHexDigits[] = "0123456789ABCDEF";

std::string Binary(int byte) {
    std::string digits;
    for (int bit = 7; bit >= 0; --bit) digits += (byte >> bit & 1) ? '1' : '0';
    return digits;
}

std::string LowByteText(std::int16_t value) { return std::to_string(value & 0xFF); }

// Rows 0 to 5 for in-row numbers 8 down to 1, then rows 0 to 5 for 10 and 9.
void PutPictureRows(std::string& out, const PiecePicture& picture) {
    for (int row = 0; row < 6; ++row) {
        std::string line(kData);
        for (int k = 8; k >= 1; --k) line += static_cast<char>('0' + image::PictureBit(picture.at(10 * row + k)));
        out += line + "b\r\n";
    }
    for (int row = 0; row < 6; ++row) {
        std::string line(kData);
        line += static_cast<char>('0' + image::PictureBit(picture.at(10 * row + 10)));
        line += static_cast<char>('0' + image::PictureBit(picture.at(10 * row + 9)));
        out += line + "000000b\r\n";
    }
}

class SourceReader {
public:
    explicit SourceReader(std::string_view text) : fields_(text) {}
    ReadResult Read();

private:
    ReadResult Stop(std::string why) {
        if (set_.LevelCount() == 0) MakeLevels(set_, 1);
        ReadResult result{std::move(set_), {}};
        result.outcome.status = ReadOutcome::Status::Stopped;
        result.outcome.where = "line " + std::to_string(fields_.LastLine());
        result.outcome.why = std::move(why);
        return result;
    }

    void TakeSettings(const std::string& digits);
    std::optional<std::string> ReadPicture(PiecePicture& picture, std::optional<std::string> inHand);

    source::FieldReader fields_;
    LevelSet set_;
};

std::string Mid(const std::string& text, std::size_t first, std::size_t length) {
    return first - 1 < text.size() ? text.substr(first - 1, length) : std::string();
}

// Characters numbered from 1; the first is not looked at. A code that matches
// nothing leaves the default.
void SourceReader::TakeSettings(const std::string& digits) {
    const std::string bonus = Mid(digits, 2, 2);
    if (bonus == "00") set_.BonusClock = "30";
    if (bonus == "01") set_.BonusClock = "60";
    if (bonus == "10") set_.BonusClock = "90";
    if (bonus == "11") set_.BonusClock = "120";
    const std::string life = Mid(digits, 4, 3);
    static const char* const lifeCodes[] = {"000", "001", "010", "011", "100", "101", "110", "111"};
    for (int i = 0; i < 8; ++i)
        if (life == lifeCodes[i]) set_.ExtraLifePoints = std::to_string(100 * (i + 1));
    if (Mid(digits, 7, 1) == "1") set_.UseWrapAround = true;
    if (Mid(digits, 8, 1) == "1") set_.ArrowBlocksBreakable = true;
}

// Twelve row texts: six for in-row numbers 8 down to 1, six for 10 and 9.
// `inHand` may already hold the first row. Returns why it failed, if it did.
std::optional<std::string> SourceReader::ReadPicture(PiecePicture& picture, std::optional<std::string> inHand) {
    for (int i = 0; i < 12; ++i) {
        std::optional<std::string> text;
        if (i == 0 && inHand && inHand->size() == 8 && source::CutToEightDigits(*inHand)) text = inHand;
        else text = fields_.GetNextByte();
        if (!text) return "the file ends inside the custom pictures";
        if (text->size() < 8 || !source::CutToEightDigits(text->substr(0, 8)))
            return "the picture row \"" + *text + "\" is not eight digits";
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
        ReadResult untouched = Refuse("");
        untouched.outcome.where = "line " + std::to_string(fields_.LastLine());
        untouched.outcome.why = "the file ends before the origin line";
        return untouched;
    }
    if (token->find("9327h") == std::string::npos) return Refuse("Not compilable code.");

    // From here the set is replaced: set_ starts as a reset set.
    token = fields_.NextString();
    if (!token) return Stop("the file ends before the game's ID");
    if (const auto s = token->find('S'); s != std::string::npos && token->find('Z', s + 1) != std::string::npos)
        set_.Kind = GameKind::Shardles;

    if (set_.IsShardles()) {
        const auto settings = fields_.GetNextByte();
        if (!settings) return Stop("the file ends before the settings");
        TakeSettings(*settings);
    }

    if (!fields_.NextString()) return Stop("the file ends before the title");  // CountOffset, unused

    token = fields_.NextString();
    if (!token) return Stop("the file ends before the title");
    std::string label = *token;
    if (set_.IsShardles())
        for (char& c : label)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    if (label.starts_with("BLOCKD:")) {
        set_.UseCustomShardles = true;
        std::optional<std::string> inHand = source::CutToEightDigits(*token);
        if (auto why = ReadPicture(set_.CustomShardlePicture, inHand)) return Stop(*why);
        if (auto why = ReadPicture(set_.CustomChangerPicture, std::nullopt)) return Stop(*why);
        token = fields_.NextString();
        if (!token) return Stop("the file ends before the title");
    }

    // The title token ends in its closing quote; TitleBackOffset - 1 characters
    // before that are the title.
    std::string title = *token;
    title.pop_back();
    if (!fields_.NextString()) return Stop("the file ends after the title");
    token = fields_.NextString();
    if (!token) return Stop("the file ends before the title's length");
    const auto backOffset = source::GetTokenValue(*token);
    if (!backOffset) return Stop("\"" + *token + "\" is not a value");
    if (*backOffset <= 0) return Stop("the title's length " + std::to_string(*backOffset) + " is below 1");
    const auto keep = static_cast<std::size_t>(*backOffset - 1);
    set_.Title = keep >= title.size() ? title : title.substr(title.size() - keep);

    for (int reserved = 0; reserved < 2; ++reserved)
        if (!fields_.NextString()) return Stop("the file ends before the level count");
    token = fields_.NextString();
    if (!token) return Stop("the file ends before the level count");
    const auto count = source::GetTokenValue(*token);
    if (!count) return Stop("\"" + *token + "\" is not a value");
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
            if (!value) return Stop("\"" + *token + "\" is not a value");
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
            if (!ballX) return Stop("\"" + *first + "\" is not a value");
            layout.BallX = static_cast<std::int16_t>(*ballX);
            for (std::int16_t* field : {&layout.BallY, &layout.BlockCount, &layout.LastBlockCount}) {
                const auto text = fields_.ReadField();
                if (!text) return Stop(ends);
                const long number = source::FieldNumber(*text);
                if (number < std::numeric_limits<std::int16_t>::min() ||
                    number > std::numeric_limits<std::int16_t>::max())
                    return Stop("the number " + *text + " is out of range");
                *field = static_cast<std::int16_t>(number);
            }
        } else {
            const auto line = fields_.ReadLine();
            if (!line) return Stop(ends);
            const auto blocks = source::DecimalTokenValue(*line);
            if (!blocks) return Stop("\"" + *line + "\" is not a value");
            layout.BlockCount = static_cast<std::int16_t>(*blocks);
        }
    }
    return ReadResult{std::move(set_), {}};
}

}  // namespace

WriteResult WriteSourceFile(const LevelSet& set) {
    if (auto problem = image::Unexportable(set)) return Refused(*problem);

    const bool shardles = set.IsShardles();
    std::string out;
    out.reserve(512 + static_cast<std::size_t>(set.LevelCount()) * 400);
    auto line = [&out](std::string_view text) {
        out += text;
        out += "\r\n";
    };
    auto data = [&line](std::string_view operand) { line(std::string(kData) + std::string(operand)); };

    line(kOrigin);
    data(shardles ? "\"Shd1KZ\"" : "\"TL1KZ\"");
    if (shardles)
        data("%" + Binary(*EncodeSettingsByte(set.BonusClock, set.ExtraLifePoints, set.UseWrapAround,
                                              set.ArrowBlocksBreakable)));
    data(std::to_string(image::CountOffset(set)));
    if (image::CarriesPictures(set)) {
        line("blockD:");
        PutPictureRows(out, set.CustomShardlePicture);
        line("blockE:");
        PutPictureRows(out, set.CustomChangerPicture);
    }
    data("\"" + set.Title + "\",$00");
    data(std::to_string(set.Title.size() + 1));  // TitleBackOffset
    data("$00,$00");
    data(std::to_string(set.LevelCount()));
    line("");

    for (int level = 1; level <= set.LevelCount(); ++level) {
        const LevelLayout& layout = set.Layout(level);
        line("level" + std::to_string(level) + ":");
        for (int row = 0; row < RowCount(set.Kind); ++row) {
            std::string operands;
            for (int k = 0; k < 4; ++k) {
                const std::size_t cell = static_cast<std::size_t>(row * kColumns + 2 * k);
                if (k > 0) operands += ',';
                operands += '$';
                operands += kHexDigits[layout.Cells[cell] & 0x0F];
                operands += kHexDigits[layout.Cells[cell + 1] & 0x0F];
            }
            data(operands);
        }
        if (shardles)
            data(LowByteText(layout.BallX) + "," + LowByteText(layout.BallY) + "," + LowByteText(layout.BlockCount) +
                 "," + LowByteText(layout.LastBlockCount));
        else
            data(LowByteText(layout.BlockCount));
        line("");
    }
    line(".end");
    line("END");
    return Written(std::move(out));
}

ReadResult ReadSourceFile(std::string_view bytes) { return SourceReader(bytes).Read(); }

}  // namespace shd
