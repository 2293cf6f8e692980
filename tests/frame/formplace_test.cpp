#include "frame/formplace.h"
#include "frame/settings.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace fx;
using namespace Qt::StringLiterals;

namespace {

const QRect kScreen(0, 0, 1920, 1080);

void Save(qint32 state, const QRect &r)
{
    SaveFormSettings(u"frmFendrix"_s, {.WindowState = state, .Top = r.top(), .Left = r.left(), .Height = r.height(), .Width = r.width()});
}

TEST(FormPlace, position_comes_back_only_when_wholly_on_the_screen_and_outlives_maximising_and_minimising)
{
    fxtest::Sandbox box;
    SetIniValue(GetConfigFile(), u"frmFendrix"_s, u"Top"_s, u"10"_s);
    EXPECT_FALSE(LoadFormSettings(u"frmFendrix"_s, kScreen)); // no state stored
    const QRect wide(0, 0, 3840, 1080);
    const std::tuple<QRect, QRect, bool> cases[] = { // saved, screen, position given
        {QRect(30, 40, 800, 600), kScreen, true},     {QRect(2000, 100, 800, 600), kScreen, false},
        {QRect(10, -5, 800, 600), kScreen, false},    {QRect(1500, 100, 800, 600), kScreen, false},
        {QRect(1500, 100, 800, 600), wide, true}};
    for (const auto &[saved, screen, given] : cases) {
        Save(FormPlace::Normal, saved);
        const auto place = LoadFormSettings(u"FRMFENDRIX"_s, screen);
        ASSERT_TRUE(place);
        EXPECT_EQ(place->HasPosition, given) << saved.x();
        EXPECT_EQ(place->Geometry(), given ? saved : QRect());
    }
    for (const qint32 state : {FormPlace::Maximized, FormPlace::Minimized}) {
        Save(state, QRect(-32000, -32000, 1920, 1080));
        const auto place = LoadFormSettings(u"frmFendrix"_s, wide);
        ASSERT_TRUE(place);
        EXPECT_EQ(place->WindowState, state);
        EXPECT_EQ(place->Geometry(), QRect(1500, 100, 800, 600));
    }
}

} // namespace
