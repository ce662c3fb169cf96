#include "toolkit/SoErrorRedirect.h"

#include <Inventor/errors/SoDebugError.h>
#include <gtest/gtest.h>
#include <string>

TEST(SoErrorRedirect, SendsErrorsElsewhereAndBackAgain)
{
    std::string outer;
    std::string inner;
    auto const take = [](SoError const* error, void* text) {
        *static_cast<std::string*>(text) += error->getDebugString().getString();
    };
    SoErrorCB* const before = SoDebugError::getHandlerCallback();
    {
        SoErrorRedirect<SoDebugError> const first(take, &outer);
        SoDebugError::post("test", "one");
        {
            SoErrorRedirect<SoDebugError> const second(take, &inner);
            SoDebugError::post("test", "two");
        }
        SoDebugError::post("test", "three");
    }
    EXPECT_EQ(SoDebugError::getHandlerCallback(), before);
    EXPECT_NE(outer.find("one"), std::string::npos);
    EXPECT_EQ(outer.find("two"), std::string::npos);
    EXPECT_NE(outer.find("three"), std::string::npos);
    EXPECT_NE(inner.find("two"), std::string::npos);
}
