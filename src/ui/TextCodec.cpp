#include "TextCodec.h"

#include "storage/Cp1252.h"

namespace scorvane {

QString fromFileText(const std::string& cp1252) {
    return fromUtf8(cp1252ToUtf8(cp1252));
}

std::string toFileText(const QString& text) {
    return utf8ToCp1252(toUtf8(text));
}

QString fromUtf8(const std::string& utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

std::string toUtf8(const QString& text) {
    const QByteArray bytes = text.toUtf8();
    return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

} // namespace scorvane
