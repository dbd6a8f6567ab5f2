#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QHash>
#include <QString>

namespace talmo {

/// The metadata of an ONNX model, read without loading it. Empty where the file is no ONNX model.
struct OnnxFile {
    QHash<QByteArray, QByteArray> metadata;
    QByteArrayList inputs;
    QByteArrayList outputs;

    static OnnxFile read(const QString &path);
};

} // namespace talmo
