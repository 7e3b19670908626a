#include "platform/linux/desktop/updates/Version.h"

#include <algorithm>

namespace orvantile::platform::desktop {
namespace {

constexpr qsizetype longestText = 64;

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

bool isLetter(QChar character) {
    const auto lower = character.unicode() | 0x20U;
    return lower >= u'a' && lower <= u'z';
}

bool isSeparator(QChar character) {
    return character == u'.' || character == u'-' || character == u'~';
}

/// The first stretch of digits or of other characters.
QStringView firstRun(QStringView text) {
    const auto end = std::find_if(text.begin(), text.end(), [&](QChar character) {
        return isDigit(character) != isDigit(text.front());
    });
    return text.first(end - text.begin());
}

std::weak_ordering sign(qsizetype difference) {
    return difference <=> qsizetype(0);
}

QStringView withoutLeadingZeros(QStringView digits) {
    while (digits.size() > 1 && digits.front() == u'0') {
        digits = digits.sliced(1);
    }
    return digits;
}

/// Runs have no bound of their own, so digits are compared by length first instead of being converted.
std::weak_ordering compareRuns(QStringView left, QStringView right) {
    if (isDigit(left.front()) && isDigit(right.front())) {
        left = withoutLeadingZeros(left);
        right = withoutLeadingZeros(right);
        if (left.size() != right.size()) {
            return sign(left.size() - right.size());
        }
    }
    return sign(left.compare(right, Qt::CaseInsensitive));
}

std::weak_ordering compareEndings(QStringView left, QStringView right) {
    if (left.isEmpty() || right.isEmpty()) {
        return left.isEmpty() <=> right.isEmpty();
    }
    while (!left.isEmpty() && !right.isEmpty()) {
        const auto leftRun = firstRun(left);
        const auto rightRun = firstRun(right);
        if (const auto order = compareRuns(leftRun, rightRun); order != 0) {
            return order;
        }
        left = left.sliced(leftRun.size());
        right = right.sliced(rightRun.size());
    }
    return sign(left.size() - right.size());
}

} // namespace

Version::Version(QVersionNumber number_, QString ending_)
    : number(std::move(number_)),
      ending(std::move(ending_)) {}

std::optional<Version> Version::parse(QStringView text) {
    text = text.trimmed();
    if (text.isEmpty() || text.size() > longestText || !isDigit(text.front())) {
        return std::nullopt;
    }
    text = text.first(text.indexOf(u'+') < 0 ? text.size() : text.indexOf(u'+'));
    qsizetype end = 0;
    auto number = QVersionNumber::fromString(text, &end).normalized();
    auto ending = text.sliced(end);
    if (!ending.isEmpty() && isSeparator(ending.front())) {
        ending = ending.sliced(1);
        if (ending.isEmpty()) {
            return std::nullopt;
        }
    }
    const auto allowed = [](QChar character) {
        return isDigit(character) || isLetter(character) || isSeparator(character);
    };
    if (!std::all_of(ending.begin(), ending.end(), allowed)) {
        return std::nullopt;
    }
    return Version(std::move(number), ending.toString());
}

std::weak_ordering operator<=>(const Version& left, const Version& right) {
    const auto order = QVersionNumber::compare(left.number, right.number);
    return order != 0 ? sign(order) : compareEndings(left.ending, right.ending);
}

} // namespace orvantile::platform::desktop
