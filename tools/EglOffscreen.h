#pragma once

/// Drawing without a window system: OpenGL contexts by EGL, of Mesa's "surfaceless" platform where there is
/// one.
class EglOffscreen
{
public:
    /// Hands the toolkit's off-screen renderer contexts of this kind from now on. Call it before
    /// SoDB::init().
    static void install();

    /// Tries out whether such a context can be had.
    /// @return what is missing and what to do, or null if all is well
    static char const* missing();
};
