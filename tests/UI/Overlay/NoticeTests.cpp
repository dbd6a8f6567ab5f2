#include "UI/Overlay/RecordingOverlay.h"

#include "UI/Accessibility/AccessibleViews.h"
#include "UI/AccessibleView.h"
#include "UI/ViewWorld.h"

#include <QImage>

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

const QString remark = u"Still working on the last sentence"_s;

class NoticeTest : public testing::Test {
protected:
    NoticeTest() { describeViewsToScreenReaders(); }
    QString detail() const { return overlay.contents().detail; }
    ViewWorld view;
    std::shared_ptr<DictationNotice> notice = std::make_shared<DictationNotice>();
    RecordingOverlay overlay{view.coordinator(), notice};
};

} // namespace

TEST_F(NoticeTest, isShownBelowTitleWhileProcessing)
{
    view.beProcessing();
    EXPECT_EQ(detail(), QString());
    notice->show(remark);
    settle();
    EXPECT_EQ(detail(), remark);
    EXPECT_EQ(overlay.contents().title, u"Cleaning up…"_s);
    notice->clear();
    settle();
    EXPECT_EQ(detail(), QString());
}

TEST_F(NoticeTest, enlargesTheCard)
{
    view.beInserting();
    const int before = overlay.idealSize().height();
    notice->show(remark);
    settle();
    EXPECT_GT(overlay.idealSize().height(), before);
}

TEST_F(NoticeTest, doesNotHideTranscriptOrError)
{
    notice->show(remark);
    view.beRecording();
    view.hear(u"hello"_s);
    EXPECT_EQ(detail(), u"hello"_s);
    EXPECT_EQ(OverlayContents::make(TalmoState::error(u"broken"_s), {}, *notice).detail, u"broken"_s);
    EXPECT_EQ(OverlayContents::make(TalmoState::idle(), {}, *notice), OverlayContents::make(TalmoState::idle(), {}));
}

TEST_F(NoticeTest, hintFollowsTheKey)
{
    view.beRecording();
    notice->setHint(u"%1: stop"_s, u"Right Ctrl"_s);
    notice->setHint(u"%1: stop"_s, u"Pause"_s);
    settle();
    EXPECT_EQ(overlay.contents().hint, u"Pause: stop"_s);
}

TEST_F(NoticeTest, hintIsShownOnlyWhileRecordingAndNamesTheKey)
{
    notice->setHint(u"%1: stop"_s, u"Right Ctrl"_s);
    settle();
    EXPECT_EQ(overlay.contents().hint, QString());
    view.beRecording();
    EXPECT_EQ(overlay.contents().hint, u"Right Ctrl: stop"_s);
    EXPECT_EQ(overlay.contents().title, u"Listening"_s);
    EXPECT_EQ(detail(), QString());
    EXPECT_EQ(accessibleText(overlay, QAccessible::Description), u"Right Ctrl: stop"_s);
    view.hear(u"hello"_s);
    EXPECT_EQ(detail(), u"hello"_s);
    EXPECT_EQ(overlay.contents().hint, u"Right Ctrl: stop"_s);
    EXPECT_EQ(accessibleText(overlay, QAccessible::Description), u"hello"_s);
    EXPECT_EQ(OverlayContents::make(TalmoState::processing(), {}, *notice),
              OverlayContents::make(TalmoState::processing(), {}));
}

TEST_F(NoticeTest, hintWidensTheCardAndIsPainted)
{
    view.beRecording();
    const QSize before = overlay.idealSize();
    notice->setHint(u"%1: stop · Esc: discard, and so on"_s, u"Right Ctrl"_s);
    settle();
    EXPECT_GT(overlay.idealSize().width(), before.width());
    EXPECT_EQ(overlay.idealSize().height(), before.height());
    const auto paintedColumns = [this] {
        overlay.resize(overlay.idealSize());
        QImage image(overlay.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        overlay.render(&image, {}, {}, QWidget::DrawChildren);
        int columns = 0;
        for (int x = image.width() / 2; x < image.width(); ++x) {
            bool isPainted = false;
            for (int y = 0; y < image.height(); ++y) {
                isPainted = isPainted || qAlpha(image.pixel(x, y)) > 0;
            }
            columns += isPainted ? 1 : 0;
        }
        return columns;
    };
    const int withHint = paintedColumns();
    notice->setHint({}, {});
    settle();
    EXPECT_GT(withHint, paintedColumns() + 50);
}

TEST_F(NoticeTest, farewellIsTheTitleOfAnIdleCard)
{
    notice->setFarewell(u"Cancelled"_s);
    settle();
    EXPECT_EQ(overlay.contents().title, u"Cancelled"_s);
    EXPECT_NE(overlay.contents().dot, QColor(Qt::transparent));
    view.beRecording();
    EXPECT_EQ(overlay.contents().title, u"Listening"_s);
}

} // namespace talmo::test
