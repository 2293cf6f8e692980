#include "frame/formplace.h"
#include "frame/settings.h"
#include "support/sandbox.h"

#include <gtest/gtest.h>

using namespace fx;

namespace {

const QRect kScreen(0, 0, 1920, 1080);

FormPlace Place(qint32 state, qint32 top, qint32 left, qint32 height, qint32 width)
{
    FormPlace place;
    place.WindowState = state;
    place.Top = top;
    place.Left = left;
    place.Height = height;
    place.Width = width;
    return place;
}

TEST(FormPlace, saved_place_comes_back)
{
    fxtest::Sandbox box;
    SaveFormSettings(QStringLiteral("frmFendrix"), Place(FormPlace::Normal, 40, 30, 600, 800));
    const auto place = LoadFormSettings(QStringLiteral("FRMFENDRIX"), kScreen);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->WindowState, FormPlace::Normal);
    EXPECT_TRUE(place->HasPosition);
    EXPECT_EQ(place->Geometry(), QRect(30, 40, 800, 600));
}

TEST(FormPlace, nothing_comes_back_without_a_stored_state)
{
    fxtest::Sandbox box;
    SetIniValue(GetConfigFile(), QStringLiteral("frmCheck"), QStringLiteral("Top"), QStringLiteral("10"));
    EXPECT_FALSE(LoadFormSettings(QStringLiteral("frmCheck"), kScreen));
    EXPECT_FALSE(LoadFormSettings(QStringLiteral("frmNever"), kScreen));
}

TEST(FormPlace, place_outside_the_present_screen_is_not_given)
{
    fxtest::Sandbox box;
    SaveFormSettings(QStringLiteral("frmA"), Place(FormPlace::Normal, 100, 2000, 600, 800));
    SaveFormSettings(QStringLiteral("frmB"), Place(FormPlace::Normal, 100, 1500, 600, 800));
    SaveFormSettings(QStringLiteral("frmC"), Place(FormPlace::Normal, -5, 10, 600, 800));
    for (const char *form : {"frmA", "frmB", "frmC"}) {
        const auto place = LoadFormSettings(QString::fromUtf8(form), kScreen);
        ASSERT_TRUE(place) << form;
        EXPECT_FALSE(place->HasPosition) << form;
    }
    // The same place fits a larger desktop.
    EXPECT_TRUE(LoadFormSettings(QStringLiteral("frmB"), QRect(0, 0, 3840, 1080))->HasPosition);
}

TEST(FormPlace, saving_a_maximised_or_minimised_form_keeps_the_normal_place)
{
    fxtest::Sandbox box;
    SaveFormSettings(QStringLiteral("frmFendrix"), Place(FormPlace::Normal, 40, 30, 600, 800));
    SaveFormSettings(QStringLiteral("frmFendrix"), Place(FormPlace::Maximized, 0, 0, 1080, 1920));
    auto place = LoadFormSettings(QStringLiteral("frmFendrix"), kScreen);
    ASSERT_TRUE(place);
    EXPECT_EQ(place->WindowState, FormPlace::Maximized);
    EXPECT_EQ(place->Geometry(), QRect(30, 40, 800, 600));
    SaveFormSettings(QStringLiteral("frmFendrix"), Place(FormPlace::Minimized, -32000, -32000, 20, 100));
    place = LoadFormSettings(QStringLiteral("frmFendrix"), kScreen);
    EXPECT_EQ(place->WindowState, FormPlace::Minimized);
    EXPECT_EQ(place->Geometry(), QRect(30, 40, 800, 600));
}

} // namespace
