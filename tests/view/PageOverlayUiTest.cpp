#include "view/LabelText.h"
#include "view/PageOverlay.h"
#include "view/SpotArchive.h"
#include "view/TargetIcon.h"

namespace leafwright {
namespace {

const Rect letter{0, 0, 300, 400};
const Rect shifted{-50, 120, 300, 400};

/// An icon whose quarters differ: red and green above, blue and black below.
QImage quarters() {
    QImage icon(2, 2, QImage::Format_ARGB32);
    icon.setPixelColor(0, 0, Qt::red);
    icon.setPixelColor(1, 0, Qt::green);
    icon.setPixelColor(0, 1, Qt::blue);
    icon.setPixelColor(1, 1, Qt::black);
    return icon.scaled(40, 40);
}

/// A page as it is shown, on gray, with `margin` points around it so that what lands elsewhere is seen too.
constexpr int margin = 120;
constexpr QColor ground(128, 128, 128);
/// So many pixels at edges may come out otherwise when glyphs are turned.
constexpr int smoothedPixels = 60;
QImage shown(const PageOverlay &overlay) {
    const bool onItsSide = overlay.rotation == 90 || overlay.rotation == 270;
    QSize size(qRound(overlay.bounds.width), qRound(overlay.bounds.height));
    if (onItsSide) size.transpose();
    QImage image(size + QSize(2 * margin, 2 * margin), QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    painter.translate(margin, image.height() - margin);
    painter.scale(1, -1);
    painter.setOpacity(1);
    const QTransform before = painter.transform();
    drawPageOverlay(painter, overlay);
    EXPECT_EQ(painter.transform(), before);
    EXPECT_EQ(painter.opacity(), 1);
    return image;
}

/// How many pixels differ by more than the smoothing of edges.
int differences(const QImage &a, const QImage &b) {
    if (a.size() != b.size()) return std::numeric_limits<int>::max();
    const auto differ = [](QRgb x, QRgb y) {
        return std::max({std::abs(qRed(x) - qRed(y)), std::abs(qGreen(x) - qGreen(y)),
                         std::abs(qBlue(x) - qBlue(y))}) > 100;
    };
    int count = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            if (differ(a.pixel(x, y), b.pixel(x, y))) ++count;
    return count;
}

/// What a painter without any turning makes of the badge on an upright page; y points down here.
QImage badgeByHand(const PageOverlay &overlay, const QRectF &badge) {
    QImage image(qRound(overlay.bounds.width) + 2 * margin, qRound(overlay.bounds.height) + 2 * margin,
                 QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    painter.translate(margin, margin);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(QColor(255, 59, 48), 1, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
    painter.setBrush(QColor(255, 0, 0));
    painter.drawRect(badge);
    QFont font("Lucida Grande");
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setPixelSize(static_cast<int>(fontSizeForAreaSize(badge.size(), overlay.label, "Lucida Grande")));
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(badge, Qt::AlignCenter, overlay.label);
    return image;
}

TEST(BadgeRect, StandsInItsCorner) {
    const double top = 120 + 400 * 0.949999988079071;
    EXPECT_EQ(badgeRect(shifted, "Q1"), (Rect{175, top, 75, 20}));
    EXPECT_EQ(badgeRect(shifted, "Q2"), (Rect{-50, top, 75, 20}));
    EXPECT_EQ(badgeRect(shifted, "Q3"), (Rect{-50, 120, 75, 20}));
    EXPECT_EQ(badgeRect(shifted, "Q4"), (Rect{175, 120, 75, 20}));
}

TEST(BadgeRect, AnyOtherValueIsTheLastCorner) {
    for (const QString location : {"Q5", "", "q1", "None"})
        EXPECT_EQ(badgeRect(shifted, location), badgeRect(shifted, "Q4"));
}

TEST(BadgeRect, OfNoPageIsNothing) {
    EXPECT_EQ(badgeRect({}, "Q1"), Rect());
}

TEST(TransformForPage, TurnsPageSpaceToThePageAsShown) {
    // Lower left and upper right corner of the page.
    const QPointF lowerLeft(shifted.x, shifted.y);
    const QPointF upperRight(shifted.right(), shifted.top());
    EXPECT_EQ(transformForPage(shifted, 0).map(lowerLeft), QPointF(0, 0));
    EXPECT_EQ(transformForPage(shifted, 0).map(upperRight), QPointF(300, 400));
    EXPECT_EQ(transformForPage(shifted, 90).map(lowerLeft), QPointF(0, 300));
    EXPECT_EQ(transformForPage(shifted, 90).map(upperRight), QPointF(400, 0));
    EXPECT_EQ(transformForPage(shifted, 270).map(lowerLeft), QPointF(400, 0));
    EXPECT_EQ(transformForPage(shifted, 270).map(upperRight), QPointF(0, 300));
}

TEST(TransformForPage, UpsideDownCrossesWidthAndHeight) {
    EXPECT_EQ(transformForPage(shifted, 180).map(QPointF(shifted.x, shifted.y)), QPointF(400, 300));
    EXPECT_EQ(transformForPage(shifted, 180).map(QPointF(shifted.right(), shifted.top())),
              QPointF(100, -100));
    const Rect square{10, 20, 300, 300};
    EXPECT_EQ(transformForPage(square, 180).map(QPointF(10, 20)), QPointF(300, 300));
}

TEST(TransformForPage, OtherRotationsAreNone) {
    EXPECT_EQ(transformForPage(shifted, 45), transformForPage(shifted, 0));
    EXPECT_EQ(transformForPage({}, 90), QTransform().rotate(-90));
}

class PageOverlayTest : public testing::TestWithParam<std::tuple<const char *, Rect>> {
protected:
    PageOverlay overlay(int rotation, const QString &label = "xiv") const {
        return {std::get<Rect>(GetParam()), rotation, label, location(), {}, quarters()};
    }
    static QString location() { return std::get<const char *>(GetParam()); }
};

TEST_P(PageOverlayTest, TheBadgeStandsUprightInItsCorner) {
    const PageOverlay upright = overlay(0);
    const bool right = location() == "Q1" || location() == "Q4";
    const bool top = location() == "Q1" || location() == "Q2";
    const QRectF badge(right ? 225 : 0, top ? 0 : 380, 75, 20);
    const QImage image = shown(upright);
    EXPECT_LT(differences(image, badgeByHand(upright, badge)), smoothedPixels);

    const QPoint corner(margin + static_cast<int>(badge.x()), margin + static_cast<int>(badge.y()));
    EXPECT_EQ(image.pixelColor(corner + QPoint(3, 3)), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(corner + QPoint(71, 16)), QColor(255, 0, 0));
    EXPECT_EQ(image.pixelColor(corner + QPoint(-3, 10)), ground);
    EXPECT_EQ(image.pixelColor(corner + QPoint(78, 10)), ground);
}

TEST_P(PageOverlayTest, AStrokeOfOnePointGoesAroundTheBadge) {
    const bool right = location() == "Q1" || location() == "Q4";
    const bool top = location() == "Q1" || location() == "Q2";
    const QImage image = shown(overlay(0));
    // Half of it lies outside of the badge, half inside: at its left edge, and at its upper one.
    const QPoint corner(margin + (right ? 225 : 0), margin + (top ? 0 : 380));
    const auto mixed = [](const QColor &a, const QColor &b) {
        return QColor((a.red() + b.red()) / 2, (a.green() + b.green()) / 2, (a.blue() + b.blue()) / 2);
    };
    const QColor stroke(255, 59, 48);
    for (const QPoint along : {QPoint(0, 3), QPoint(3, 0)}) {
        const QPoint across(along.y() / 3, along.x() / 3);
        const QColor outside = image.pixelColor(corner + along - across);
        const QColor inside = image.pixelColor(corner + along);
        for (const auto &[pixel, beside] :
             {std::pair(outside, ground), std::pair(inside, QColor(255, 0, 0))}) {
            EXPECT_NEAR(pixel.red(), mixed(stroke, beside).red(), 3);
            EXPECT_NEAR(pixel.green(), mixed(stroke, beside).green(), 3);
            EXPECT_NEAR(pixel.blue(), mixed(stroke, beside).blue(), 3);
        }
    }
}

TEST_P(PageOverlayTest, OnAPageOnItsSideTheBadgeTurnsWithThePage) {
    const QImage upright = shown(overlay(0));
    for (const int rotation : {90, 270})
        EXPECT_LT(differences(shown(overlay(rotation)), upright.transformed(QTransform().rotate(rotation))),
                  smoothedPixels)
            << rotation;
}

TEST_P(PageOverlayTest, OnAPageUpsideDownTheBadgeLandsByTheCrossedTranslation) {
    // Turned as it should be, then moved by what height and width differ.
    const QImage turned = shown(overlay(0)).transformed(QTransform().rotate(180));
    QImage expected(turned.size(), turned.format());
    expected.fill(ground);
    QPainter(&expected).drawImage(100, 100, turned);
    const QImage image = shown(overlay(180));
    EXPECT_LT(differences(image, expected), smoothedPixels);
    EXPECT_GT(differences(image, turned), 500);
}

TEST_P(PageOverlayTest, TheIconIsCentredOnItsSpotAndUpright) {
    PageOverlay marked = overlay(0);
    const Rect bounds = marked.bounds;
    marked.iconLocation = archivedSpot({{bounds.x + 100, bounds.y + 150}, "xiv"});
    const QImage image = shown(marked);
    const QPoint centre(margin + 100, margin + 250);
    // Three quarters of the icon over the ground.
    const auto over = [](const QColor &color) {
        const auto mix = [](int above, int below) { return (above * 3 + below) / 4; };
        return QColor(mix(color.red(), 128), mix(color.green(), 128), mix(color.blue(), 128));
    };
    const auto expectNear = [&](const QPoint &offset, const QColor &color) {
        const QColor pixel = image.pixelColor(centre + offset);
        EXPECT_NEAR(pixel.red(), over(color).red(), 2);
        EXPECT_NEAR(pixel.green(), over(color).green(), 2);
        EXPECT_NEAR(pixel.blue(), over(color).blue(), 2);
    };
    expectNear({-6, -6}, Qt::red);
    expectNear({5, -6}, Qt::green);
    expectNear({-6, 5}, Qt::blue);
    expectNear({5, 5}, Qt::black);
    for (const QPoint outside : {QPoint(-12, 0), QPoint(11, 0), QPoint(0, -12), QPoint(0, 11)})
        EXPECT_EQ(image.pixelColor(centre + outside), ground);
}

TEST_P(PageOverlayTest, TheIconTurnsWithThePage) {
    PageOverlay marked = overlay(0);
    marked.iconLocation = archivedSpot({{marked.bounds.x + 100, marked.bounds.y + 150}, "xiv"});
    const QImage upright = shown(marked);
    for (const int rotation : {90, 270}) {
        marked.rotation = rotation;
        EXPECT_LT(differences(shown(marked), upright.transformed(QTransform().rotate(rotation))),
                  smoothedPixels)
            << rotation;
    }
}

INSTANTIATE_TEST_SUITE_P(CornersAndBoxes, PageOverlayTest,
                         testing::Combine(testing::Values("Q1", "Q2", "Q3", "Q4"),
                                          testing::Values(letter, shifted)));

QImage blank() {
    return shown({letter, 0, "1", "None", {}, {}});
}

TEST(PageOverlay, WithNoneThereIsNeitherBadgeNorIcon) {
    EXPECT_EQ(blank().pixelColor(margin + 230, margin + 10), ground);
    EXPECT_EQ(shown({letter, 0, "1", "None", archivedSpot({{100, 100}, "1"}), quarters()}), blank());
}

TEST(PageOverlay, TheIconShowsOnPagesWithTheSameLabelOnly) {
    const auto at = [](const QString &label, const QByteArray &archive) {
        return shown({letter, 0, label, "Q1", archive, quarters()}).pixelColor(margin + 95, margin + 295);
    };
    const QByteArray archive = archivedSpot({{100, 100}, "1"});
    EXPECT_NE(at("1", archive), ground);
    EXPECT_EQ(at("2", archive), ground);
    EXPECT_EQ(at("1 ", archive), ground);
    EXPECT_EQ(at("1", {}), ground);
    EXPECT_EQ(at("1", "no archive"), ground);
}

TEST(PageOverlay, LabelsMayBeEmptyOrLong) {
    const QImage empty = shown({letter, 0, "", "Q1", {}, {}});
    EXPECT_EQ(empty.pixelColor(margin + 262, margin + 10), QColor(255, 0, 0));
    const QImage large = shown({letter, 0, QString(100000, 'm'), "Q1", {}, {}});
    EXPECT_EQ(large, empty);
}

/// What a page of that size, from the upper left corner on, makes of 50 pixels by 50; its spot is far
/// outside.
QImage squarePage(double size) {
    QImage image(50, 50, QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    drawPageOverlay(painter,
                    {{0, 0, size, size}, 0, "1", "Q3", archivedSpot({{1e300, -1e300}, "1"}), quarters()});
    EXPECT_TRUE(painter.transform().isIdentity());
    EXPECT_EQ(painter.opacity(), 1);
    return image;
}

TEST(PageOverlay, ATinyPageShowsItsBadgesStrokeAtMost) {
    for (const double size : {0.0, 1e-3, 1.0}) {
        QImage image = squarePage(size);
        QPainter(&image).fillRect(0, 0, 2, 2, ground);
        QImage untouched(50, 50, QImage::Format_RGB32);
        untouched.fill(ground);
        EXPECT_EQ(image, untouched) << size;
    }
}

TEST(PageOverlay, AHugePageShowsItsBadge) {
    const QImage image = squarePage(1e7);
    for (const QPoint pixel : {QPoint(5, 5), QPoint(25, 25), QPoint(49, 49)})
        EXPECT_EQ(image.pixelColor(pixel), QColor(255, 0, 0));
}

TEST(TargetIcon, ComesFromTheResources) {
    const QImage &icon = targetIcon();
    ASSERT_EQ(icon.size(), QSize(160, 160));
    EXPECT_EQ(&icon, &targetIcon());
    // A ring and a dot, nothing in the corners, and a view through between them.
    EXPECT_EQ(icon.pixelColor(0, 0).alpha(), 0);
    EXPECT_EQ(icon.pixelColor(159, 159).alpha(), 0);
    EXPECT_EQ(icon.pixelColor(80, 80).alpha(), 255);
    EXPECT_GT(icon.pixelColor(80, 80).red(), icon.pixelColor(80, 80).blue() + 100);
    EXPECT_EQ(icon.pixelColor(80, 16).alpha(), 255);
    EXPECT_NEAR(icon.pixelColor(80, 46).alpha(), 128, 4);
}

}  // namespace
}  // namespace leafwright
