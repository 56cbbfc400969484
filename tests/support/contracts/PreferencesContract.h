#pragma once

#include "oribund/host/services/EditorPreferences.h"

#include <gtest/gtest.h>

namespace oribund::test
{

/**
 * What every EditorPreferences keeps to. `Maker` makes an empty store when it is constructed; `preferences()` gives it,
 * opened anew at each call where it is kept on a disk.
 */
template <class Maker>
class PreferencesContract : public testing::Test
{
protected:
    EditorPreferences& preferences() { return maker.preferences(); }

    Maker maker;
};

TYPED_TEST_SUITE_P(PreferencesContract);

TYPED_TEST_P(PreferencesContract, GivesTheDefaultForWhatWasNeverStored)
{
    const EditorPreferences& preferences = this->preferences();
    EXPECT_EQ(preferences.getPreference("Area : item", -3), -3);
    EXPECT_EQ(preferences.getPreference("Area : item", 0.25), 0.25);
    EXPECT_TRUE(preferences.getPreference("Area : item", true));
    EXPECT_EQ(preferences.getPreference("Area : item", WString(L"none")), WString(L"none"));
    EXPECT_EQ(preferences.getPreference("", 1), 1);
}

TYPED_TEST_P(PreferencesContract, GivesBackEachTypeExactly)
{
    EditorPreferences& preferences = this->preferences();
    EXPECT_TRUE(preferences.setPreference("int", -2147483647));
    EXPECT_TRUE(preferences.setPreference("real", 0.1));
    EXPECT_TRUE(preferences.setPreference("small", 1e-300));
    EXPECT_TRUE(preferences.setPreference("flag", false));
    EXPECT_TRUE(preferences.setPreference("text", String("a \"b\" \\ \n \t c")));
    EXPECT_TRUE(preferences.setPreference("wide", WString(L"Gr\u00f6\u00dfe \u2713 \U0001F3AC")));
    EXPECT_TRUE(preferences.setPreference("empty", ""));

    // Asked for again: a maker of a store on disk opens it anew.
    const EditorPreferences& stored = this->preferences();
    EXPECT_EQ(stored.getPreference("int", 0), -2147483647);
    EXPECT_EQ(stored.getPreference("real", 0.0), 0.1);
    EXPECT_EQ(stored.getPreference("small", 0.0), 1e-300);
    EXPECT_FALSE(stored.getPreference("flag", true));
    EXPECT_EQ(stored.getPreference("text", ""), String("a \"b\" \\ \n \t c"));
    EXPECT_EQ(stored.getPreference("wide", WString()), WString(L"Gr\u00f6\u00dfe \u2713 \U0001F3AC"));
    EXPECT_EQ(stored.getPreference("empty", "something"), String());
}

TYPED_TEST_P(PreferencesContract, KeysAreExactAndTheLastValueStands)
{
    EditorPreferences& preferences = this->preferences();
    preferences.setPreference("Effect Panel : Last used (ID)", 1);
    preferences.setPreference("Effect Panel : Last used", 2);
    preferences.setPreference("effect panel : last used", 3);
    EXPECT_EQ(preferences.getPreference("Effect Panel : Last used (ID)", 0), 1);
    EXPECT_EQ(preferences.getPreference("Effect Panel : Last used", 0), 2);
    preferences.setPreference("Effect Panel : Last used", "now a text");
    EXPECT_EQ(preferences.getPreference("Effect Panel : Last used", ""), String("now a text"));
    EXPECT_EQ(preferences.getPreference("Effect Panel : Last used", 9), 9);
}

REGISTER_TYPED_TEST_SUITE_P(PreferencesContract, GivesTheDefaultForWhatWasNeverStored, GivesBackEachTypeExactly,
                            KeysAreExactAndTheLastValueStands);

} // namespace oribund::test
