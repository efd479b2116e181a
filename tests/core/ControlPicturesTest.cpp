#include "core/ControlPictures.h"

#include <gtest/gtest.h>

namespace tv {

TEST(ControlPictures, EachControlCharacterShowsAsItsPicture) {
    using namespace std::string_literals;
    EXPECT_EQ(ShowControlCharacters("a\0b\x1B[2J\x7F\tc\xC3\xA9\n"s),
              "a\u2400b\u241B[2J\u2421\u2409c\xC3\xA9\u240A");
    EXPECT_EQ(ShowControlCharacters("one\ntwo\r"s, true), "one\ntwo\u240D");
    EXPECT_EQ(ShowControlCharacters("plain text"), "plain text");
}

} // namespace tv
