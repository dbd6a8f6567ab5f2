#pragma once

#include <QString>

namespace talmo::accuracy {

/// A number in digits as it is spoken: "1,250" and "3.5" as numbers, "1862" as a year, "007" digit by digit.
QString spokenNumber(QString digits);
/// "twenty first" for 21.
QString spokenOrdinal(qint64 number);
/// "nineteen twenties" for 1920.
QString spokenDecade(int year);
/// "five o clock" for 5:00, "seven thirty" for 7:30.
QString spokenTime(int hour, int minute);

} // namespace talmo::accuracy
