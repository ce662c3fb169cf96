#pragma once

/// Drawing without a window system: OpenGL contexts of EGL, on Mesa's "surfaceless" platform where there is
/// one.
class EglOffscreen
{
public:
    /// Gives the toolkit's off-screen renderer contexts of this kind from now on. Call it before
    /// SoDB::init().
    static void install();

    /// Tries whether such a context can be made.
    /// @return what is missing and what to do, or null if all is well
    static char const* missing();
};
