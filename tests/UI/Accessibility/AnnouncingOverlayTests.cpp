#include "UI/Accessibility/AnnouncingOverlay.h"

#include "UI/ViewWorld.h"

#include <gmock/gmock.h>

namespace talmo::test {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class SilentOverlay final : public OverlayService {
public:
    std::vector<std::string> calls;
    void show() override { calls.emplace_back("show"); }
    void hide() override { calls.emplace_back("hide"); }
};

class AnnouncingOverlayTest : public testing::Test {
protected:
    /// Enters the state as the coordinator does.
    void show(const std::function<void()> &enter)
    {
        enter();
        overlay.show();
    }
    void hideWhenIdle()
    {
        view.inserted->finish();
        settle();
        overlay.hide();
    }

    ViewWorld view;
    std::shared_ptr<SilentOverlay> card = std::make_shared<SilentOverlay>();
    std::shared_ptr<DictationNotice> notice = std::make_shared<DictationNotice>();
    QStringList told;
    AnnouncingOverlay overlay{card, view.coordinator(), notice, [this](const QString &text) { told.append(text); }};
};

} // namespace

TEST_F(AnnouncingOverlayTest, announcesEachStateOnce)
{
    show([this] { view.beRecording(); });
    EXPECT_THAT(told, ElementsAre(u"Listening"_s));
    view.hear(u"hello"_s);
    view.hear(u"hello world"_s);
    EXPECT_EQ(told.size(), 1);
    overlay.hide();
    EXPECT_EQ(told.size(), 1);
    EXPECT_THAT(card->calls, ElementsAre("show", "hide"));
}

TEST_F(AnnouncingOverlayTest, announcesInsertionAndItsEnd)
{
    show([this] { view.beInserting(); });
    hideWhenIdle();
    EXPECT_THAT(told, ElementsAre(u"Inserting…"_s, u"Inserted"_s));
    overlay.hide();
    EXPECT_EQ(told.size(), 2);
}

TEST_F(AnnouncingOverlayTest, announcesErrorEveryTimeItOccursButNotItsHiding)
{
    show([this] { view.fail(u"broken"_s); });
    overlay.hide();
    show([this] { view.fail(u"broken"_s); });
    EXPECT_THAT(told, ElementsAre(u"broken"_s, u"broken"_s));
}

TEST_F(AnnouncingOverlayTest, announcesFarewellInsteadOfInsertion)
{
    show([this] { view.beRecording(); });
    notice->setFarewell(u"Cancelled"_s);
    view.coordinator().cancelDictation();
    overlay.hide();
    settle();
    EXPECT_THAT(told, ElementsAre(u"Listening"_s, u"Cancelled"_s));
}

TEST_F(AnnouncingOverlayTest, announcesNoticeOnce)
{
    notice->show(u"Still working on the last sentence"_s);
    settle();
    notice->setHint(u"%1: stop"_s, u"Right Ctrl"_s);
    settle();
    EXPECT_THAT(told, ElementsAre(u"Still working on the last sentence"_s));
    notice->clear();
    settle();
    EXPECT_EQ(told.size(), 1);
}

} // namespace talmo::test
