#include "gui/Gif.h"

#include <cstdint>
#include <cstring>
#include <vector>

namespace shd::gui {

namespace {
constexpr int kMaxCodes = 4096;  // 12-bit codes

class Reader {
public:
    explicit Reader(const QByteArray& bytes)
        : data_(reinterpret_cast<const std::uint8_t*>(bytes.constData())), size_(static_cast<std::size_t>(bytes.size())) {}
    bool Has(std::size_t n) const { return size_ - at_ >= n; }
    std::uint8_t Byte() { return data_[at_++]; }
    int Word() {
        const int low = data_[at_], high = data_[at_ + 1];
        at_ += 2;
        return low | high << 8;
    }
    const std::uint8_t* Take(std::size_t n) {
        const std::uint8_t* p = data_ + at_;
        at_ += n;
        return p;
    }

private:
    const std::uint8_t* data_;
    std::size_t size_;
    std::size_t at_ = 0;
};

// The image data's sub-blocks as one run of bytes; false if they do not end.
bool GatherData(Reader& in, std::vector<std::uint8_t>& out) {
    for (;;) {
        if (!in.Has(1)) return false;
        const std::size_t length = in.Byte();
        if (length == 0) return true;
        if (!in.Has(length)) return false;
        const std::uint8_t* block = in.Take(length);
        out.insert(out.end(), block, block + length);
    }
}

// Decodes exactly `count` colour indices into `out`; false on anything out of order.
bool Decompress(const std::vector<std::uint8_t>& data, int minimumCodeSize, int colours, std::uint8_t* out,
                std::size_t count) {
    const int clear = 1 << minimumCodeSize;
    const int end = clear + 1;
    // Each code's string is its prefix code's string and one more index.
    // Only codes below `next` are ever read, so the rest is left as it is.
    struct Table {
        std::uint16_t prefix[kMaxCodes];
        std::uint16_t length[kMaxCodes];
        std::uint8_t suffix[kMaxCodes];
        std::uint8_t first[kMaxCodes];
    } table;
    for (int c = 0; c < clear; ++c) {
        table.suffix[c] = table.first[c] = static_cast<std::uint8_t>(c);
        table.length[c] = 1;
    }

    int codeSize = minimumCodeSize + 1;
    int next = clear + 2;
    int previous = -1;
    std::uint32_t bits = 0;
    int bitCount = 0;
    std::size_t byte = 0;
    std::size_t written = 0;
    for (;;) {
        while (bitCount < codeSize) {
            if (byte == data.size()) return false;  // no end code
            bits |= static_cast<std::uint32_t>(data[byte++]) << bitCount;
            bitCount += 8;
        }
        const int code = static_cast<int>(bits & ((1u << codeSize) - 1));
        bits >>= codeSize;
        bitCount -= codeSize;

        if (code == clear) {
            codeSize = minimumCodeSize + 1;
            next = clear + 2;
            previous = -1;
            continue;
        }
        if (code == end) return written == count;
        // Every index of every string came in as a code of its own, so
        // checking those checks them all.
        if (code < clear && code >= colours) return false;
        if (code > next || (code == next && (previous < 0 || next == kMaxCodes))) return false;

        // The string is written from its last index back to its first.
        const bool repeat = code == next;  // the previous string and its own first index
        const std::size_t length = repeat ? table.length[previous] + 1u : table.length[code];
        if (count - written < length) return false;  // more indices than the image holds
        std::uint8_t* at = out + written + length - 1;
        int c = code;
        if (repeat) {
            *at-- = table.first[previous];
            c = previous;
        }
        while (c >= clear) {
            *at-- = table.suffix[c];
            c = table.prefix[c];
        }
        *at = static_cast<std::uint8_t>(c);
        written += length;

        if (previous >= 0 && next < kMaxCodes) {
            table.prefix[next] = static_cast<std::uint16_t>(previous);
            table.suffix[next] = static_cast<std::uint8_t>(c);
            table.first[next] = table.first[previous];
            table.length[next] = static_cast<std::uint16_t>(table.length[previous] + 1);
            ++next;
            if (next == 1 << codeSize && codeSize < 12) ++codeSize;
        }
        previous = code;
    }
}
}  // namespace

QImage ReadPlainGif(const QByteArray& bytes) {
    Reader in(bytes);
    if (!in.Has(13)) return {};
    const std::uint8_t* signature = in.Take(6);
    if (std::memcmp(signature, "GIF87a", 6) != 0 && std::memcmp(signature, "GIF89a", 6) != 0) return {};
    const int width = in.Word();
    const int height = in.Word();
    const std::uint8_t flags = in.Byte();
    in.Byte();  // background colour: the image covers it all
    in.Byte();  // aspect ratio
    if (!(flags & 0x80) || width == 0 || height == 0) return {};
    const int colours = 2 << (flags & 7);
    if (!in.Has(static_cast<std::size_t>(3 * colours))) return {};
    const std::uint8_t* table = in.Take(static_cast<std::size_t>(3 * colours));

    // The one image, straight after the colour table.
    if (!in.Has(10) || in.Byte() != 0x2C) return {};
    const int left = in.Word(), top = in.Word(), frameWidth = in.Word(), frameHeight = in.Word();
    const std::uint8_t imageFlags = in.Byte();
    if (left != 0 || top != 0 || frameWidth != width || frameHeight != height || (imageFlags & 0x80)) return {};
    const bool interlaced = imageFlags & 0x40;
    if (!in.Has(1)) return {};
    const int minimumCodeSize = in.Byte();
    if (minimumCodeSize < 2 || minimumCodeSize > 8) return {};
    std::vector<std::uint8_t> data;
    if (!GatherData(in, data)) return {};
    if (!in.Has(1) || in.Byte() != 0x3B) return {};  // the trailer: nothing more in the file

    const std::size_t count = static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
    // A header may claim up to 65535 x 65535 pixels; no code gives more than
    // 4096 of them, so a claim the data cannot fill is refused before any
    // room is made for it, and big pictures are left to Qt and its limits.
    constexpr std::size_t kLargest = std::size_t{1} << 24;
    const std::size_t codes = data.size() * 8 / static_cast<std::size_t>(minimumCodeSize + 1) + 1;
    if (count > kLargest || count > codes * kMaxCodes) return {};
    std::vector<std::uint8_t> indices(count);
    if (!Decompress(data, minimumCodeSize, colours, indices.data(), count)) return {};

    QImage image(width, height, QImage::Format_RGB32);
    if (image.isNull()) return {};
    QRgb rgb[256];
    for (int i = 0; i < colours; ++i) rgb[i] = qRgb(table[3 * i], table[3 * i + 1], table[3 * i + 2]);
    // Interlaced rows come in four passes: every 8th from 0, every 8th from 4,
    // every 4th from 2, every 2nd from 1.
    static constexpr int kStart[] = {0, 4, 2, 1};
    static constexpr int kStep[] = {8, 8, 4, 2};
    uchar* const bits = image.bits();
    const qsizetype stride = image.bytesPerLine();
    const std::uint8_t* source = indices.data();
    auto putRow = [&](int y) {
        auto* row = reinterpret_cast<QRgb*>(bits + y * stride);
        for (int x = 0; x < width; ++x) row[x] = rgb[source[x]];
        source += width;
    };
    if (interlaced) {
        for (int pass = 0; pass < 4; ++pass)
            for (int y = kStart[pass]; y < height; y += kStep[pass]) putRow(y);
    } else {
        for (int y = 0; y < height; ++y) putRow(y);
    }
    return image;
}

}  // namespace shd::gui
