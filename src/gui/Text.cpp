#include "gui/Text.h"

#include <QFile>
#include <QStringDecoder>
#include <QStringEncoder>

namespace shd::gui {

namespace {
constexpr const char* kCodePage = "Windows-1252";
}

QString ToQt(const std::string& bytes) {
    QStringDecoder decoder(kCodePage);
    return decoder.decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

std::string ToBytes(const QString& text) {
    QStringEncoder encoder(kCodePage, QStringConverter::Flag::Stateless);
    QByteArray whole = encoder.encode(text);
    if (!encoder.hasError()) return whole.toStdString();
    // Some character has no byte: go one character at a time so only that
    // character turns into "?" (the converter's own substitute is a control byte).
    std::string bytes;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const qsizetype length = text.at(i).isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        QStringEncoder one(kCodePage, QStringConverter::Flag::Stateless);
        const QByteArray encoded = one.encode(QStringView(text).mid(i, length));
        if (one.hasError() || encoded.size() != 1) bytes += '?';
        else bytes += encoded.at(0);
        i += length - 1;
    }
    return bytes;
}

std::string PathBytes(const QString& path) { return QFile::encodeName(path).toStdString(); }

QString PathText(const std::string& bytes) {
    return QFile::decodeName(QByteArray(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

}  // namespace shd::gui
