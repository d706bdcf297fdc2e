#pragma once

#include <QString>

#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>

namespace orvella {

/// What is wrong with a drawn value: nothing, or its path and the problem as a failure to read it names them.
struct DrawnFault {
    QString path;
    QString problem;

    [[nodiscard]] explicit operator bool() const { return !problem.isEmpty(); }
    [[nodiscard]] DrawnFault under(const QString& key) const;
};

/// The kinds of JSON values.
enum class JsonKind { null, boolean, integer, fraction, text, list, object, kMaxValue = object };

// Each draws a value of its kind from the fuzzer's bytes, in one of the ways to write it, and gives what is to be read.
[[nodiscard]] std::string drawBoolean(FuzzedDataProvider& bytes, bool& value);
[[nodiscard]] std::string drawInteger(FuzzedDataProvider& bytes, qint64& value);
[[nodiscard]] std::string drawNumber(FuzzedDataProvider& bytes, double& value);
[[nodiscard]] std::string drawText(FuzzedDataProvider& bytes, QString& value);

/// A number that is no integer to us: it has a fraction, however small, or it is beyond 64 bits.
[[nodiscard]] std::string drawFraction(FuzzedDataProvider& bytes);

/// A value of any kind.
[[nodiscard]] std::string drawAnything(FuzzedDataProvider& bytes, JsonKind kind);

/// A JSON string of the text, with some of its characters escaped.
[[nodiscard]] std::string written(FuzzedDataProvider& bytes, const QString& text);

} // namespace orvella
