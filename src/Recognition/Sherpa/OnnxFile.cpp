#include "Recognition/Sherpa/OnnxFile.h"

#include <QFile>

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace talmo {

namespace {

// The fields of ONNX's protocol buffers that are read here.
enum ModelField { Graph = 7, Metadata = 14 };
enum GraphField { Input = 11, Output = 12 };
enum EntryField { Key = 1, Value = 2 };

std::optional<std::uint64_t> takeNumber(std::string_view &bytes)
{
    constexpr unsigned bitsPerByte = 7;
    constexpr unsigned mostBits = 64;
    std::uint64_t number = 0;
    for (unsigned shift = 0; shift < mostBits && !bytes.empty(); shift += bitsPerByte) {
        const auto byte = static_cast<unsigned char>(bytes.front());
        bytes.remove_prefix(1);
        number |= std::uint64_t(byte & 0x7fU) << shift;
        if ((byte & 0x80U) == 0) {
            return number;
        }
    }
    return std::nullopt;
}

/// Visits the fields that have a length; large ones are skipped without being read. Ends at the first damage.
void forEachField(std::string_view message, const std::function<void(int field, std::string_view content)> &visit)
{
    enum WireType { Varint = 0, Fixed64 = 1, Length = 2, Fixed32 = 5 };
    while (!message.empty()) {
        const auto tag = takeNumber(message);
        if (!tag) {
            return;
        }
        std::uint64_t size = 0;
        switch (*tag & 7U) {
        case Varint:
            if (!takeNumber(message)) {
                return;
            }
            continue;
        case Fixed64:
            size = sizeof(std::uint64_t);
            break;
        case Fixed32:
            size = sizeof(std::uint32_t);
            break;
        case Length:
            size = takeNumber(message).value_or(message.size() + 1);
            if (size <= message.size()) {
                visit(static_cast<int>(*tag >> 3U), message.substr(0, size));
            }
            break;
        default:
            return;
        }
        if (size > message.size()) {
            return;
        }
        message.remove_prefix(size);
    }
}

QByteArray fieldOf(std::string_view message, int wanted)
{
    QByteArray found;
    forEachField(message, [&found, wanted](int field, std::string_view content) {
        if (field == wanted) {
            found = QByteArray(content.data(), static_cast<qsizetype>(content.size()));
        }
    });
    return found;
}

} // namespace

OnnxFile OnnxFile::read(const QString &path)
{
    OnnxFile result;
    QFile file(path);
    const uchar *bytes = file.open(QFile::ReadOnly) ? file.map(0, file.size()) : nullptr;
    if (bytes == nullptr) {
        return result;
    }
    const std::string_view model(reinterpret_cast<const char *>(bytes), // NOLINT: the same bytes as characters.
                                 static_cast<std::size_t>(file.size()));
    const auto visitGraph = [&result](int field, std::string_view content) {
        if (field == Input) {
            result.inputs.append(fieldOf(content, Key));
        } else if (field == Output) {
            result.outputs.append(fieldOf(content, Key));
        }
    };
    forEachField(model, [&](int field, std::string_view content) {
        if (field == Graph) {
            forEachField(content, visitGraph);
        } else if (field == Metadata) {
            result.metadata.insert(fieldOf(content, Key), fieldOf(content, Value));
        }
    });
    return result;
}

} // namespace talmo
