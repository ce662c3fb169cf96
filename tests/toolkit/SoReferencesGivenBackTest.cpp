#include "toolkit/SoReferencesGivenBack.h"

#include <Inventor/nodes/SoSeparator.h>
#include <gtest/gtest.h>

TEST(SoReferencesGivenBack, GivesBackWhatCameMeanwhileAndNoMore)
{
    auto* const node = new SoSeparator;
    node->ref();
    {
        SoReferencesGivenBack const references(node);
        node->ref();
        node->ref();
    }
    EXPECT_EQ(node->getRefCount(), 1);
    {
        SoReferencesGivenBack const references(node);
    }
    EXPECT_EQ(node->getRefCount(), 1);
    node->unref();
}
