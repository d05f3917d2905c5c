#include "gui/Text.h"

#include <QFile>
#include <array>

#include "model/Cp1252.h"

namespace shd::gui {

namespace {
// Windows-1252 is Latin-1 but for 0x80 to 0x9F. Converting by table rather
// than through Qt's converter keeps ICU and its data out of the window's
// start-up, which shows several texts.
struct HighBytes {
    std::array<char16_t, 32> characters{};  // of the bytes 0x80 to 0x9F
    HighBytes() {
        for (int b = 0x80; b < 0xA0; ++b) {
            const char byte = static_cast<char>(b);
            characters[static_cast<std::size_t>(b - 0x80)] =
                QString::fromUtf8(Cp1252ToUtf8(std::string_view(&byte, 1))).at(0).unicode();
        }
    }
};

const HighBytes& High() {
    static const HighBytes high;
    return high;
}

char ByteOf(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<char>(c);
    const auto& table = High().characters;
    for (std::size_t i = 0; i < table.size(); ++i)
        if (table[i] == c) return static_cast<char>(0x80 + i);
    return '?';
}
}  // namespace

QString ToQt(const std::string& bytes) {
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    char16_t* out = reinterpret_cast<char16_t*>(text.data());
    for (const char c : bytes) {
        const auto b = static_cast<unsigned char>(c);
        *out++ = b >= 0x80 && b < 0xA0 ? High().characters[b - 0x80u] : char16_t{b};
    }
    return text;
}

std::string ToBytes(const QString& text) {
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(text.size()));
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (c.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate()) {
            bytes += '?';  // beyond the Basic Multilingual Plane: one character, one "?"
            ++i;
        } else {
            bytes += ByteOf(c.unicode());
        }
    }
    return bytes;
}

std::string PathBytes(const QString& path) { return QFile::encodeName(path).toStdString(); }

QString PathText(const std::string& bytes) {
    return QFile::decodeName(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

}  // namespace shd::gui
