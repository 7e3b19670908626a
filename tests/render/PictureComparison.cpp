#include "render/PictureComparison.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <cstdlib>
#include <gtest/gtest.h>

namespace orvantile::test {

using Qt::StringLiterals::operator""_s;

PictureDifference compare(const QImage& left, const QImage& right) {
    constexpr int seen = 24;
    double sum = 0;
    double far = 0;
    for (int y = 0; y < left.height(); ++y) {
        for (int x = 0; x < left.width(); ++x) {
            const auto a = left.pixel(x, y);
            const auto b = right.pixel(x, y);
            const std::array channels{std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                      std::abs(qBlue(a) - qBlue(b))};
            sum += channels[0] + channels[1] + channels[2];
            far += std::ranges::max(channels) > seen ? 1 : 0;
        }
    }
    const double pixels = double{1} * left.width() * left.height();
    return {sum / (3 * pixels), far / pixels};
}

void expectGolden(const QImage& actual, const QString& path, double farShare) {
    const QFileInfo file(path);
    if (qEnvironmentVariableIsSet("ORVANTILE_UPDATE_GOLDENS")) {
        ASSERT_TRUE(QDir().mkpath(file.path()) && actual.save(path));
        GTEST_SKIP() << "drawn anew: " << path.toStdString();
    }
    const QImage golden(path);
    ASSERT_FALSE(golden.isNull()) << path.toStdString();
    bool same = actual.size() == golden.size();
    EXPECT_TRUE(same) << actual.width() << " × " << actual.height() << " instead of " << golden.width()
                      << " × " << golden.height();
    if (same) {
        const auto difference = compare(actual, golden);
        EXPECT_LT(difference.mean, 0.5);
        EXPECT_LT(difference.farShare, farShare);
        same = difference.mean < 0.5 && difference.farShare < farShare;
    }
    if (!same) {
        const auto kept = QDir::temp().filePath(u"orvantile-"_s + file.fileName());
        actual.save(kept);
        ADD_FAILURE() << "what was drawn is kept in " << kept.toStdString();
    }
}

} // namespace orvantile::test
