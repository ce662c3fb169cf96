#pragma once

#include <string>
#include <vector>

class SoCallbackAction;
class SoNode;
class SoPrimitiveVertex;

/// Goes over what the toolkit draws of a scene but texts, and knows what holds where it is.
class ScenePrimitives
{
public:
    virtual ~ScenePrimitives() = default;

    ScenePrimitives(ScenePrimitives const&) = delete;
    ScenePrimitives& operator=(ScenePrimitives const&) = delete;

    void goOver(SoNode* root);

protected:
    using Vertex = SoPrimitiveVertex;

    ScenePrimitives() = default;

    /// @name For each of them
    /// @{
    virtual void takeTriangle(SoCallbackAction& action, Vertex const& a, Vertex const& b,
                              Vertex const& c) = 0;
    virtual void takeLine(SoCallbackAction& action, Vertex const& a, Vertex const& b) = 0;
    virtual void takePoint(SoCallbackAction& action, Vertex const& vertex) = 0;
    /// @}

    bool isTurning() const { return billboards > 0; }                        ///< To the eye.
    std::string const& picture() const { return separators.back().picture; } ///< Its name; empty without one.
    std::string const& name() const
    {
        return separators.back().name;
    } ///< Of the nearest separator that has one.

private:
    struct Separator {
        std::string name;
        std::string picture;
    };
    struct Callbacks;

    int billboards = 0;
    std::vector<Separator> separators{{}}; ///< Around the present node.
};
