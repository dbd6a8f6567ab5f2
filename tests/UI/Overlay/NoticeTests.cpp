#include "UI/Overlay/RecordingOverlay.h"

#include "UI/ViewWorld.h"

#include <gtest/gtest.h>

namespace talmo::test {

namespace {

const QString remark = u"Still working on the last sentence"_s;

class NoticeTest : public testing::Test {
protected:
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
    EXPECT_EQ(OverlayContents::make(TalmoState::error(u"broken"_s), {}, remark).detail, u"broken"_s);
    EXPECT_EQ(OverlayContents::make(TalmoState::idle(), {}, remark), OverlayContents::make(TalmoState::idle(), {}));
}

} // namespace talmo::test
