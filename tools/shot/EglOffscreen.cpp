#include "shot/EglOffscreen.h"

#include <EGL/egl.h>
#include <EGL/eglext.h>
#include <Inventor/C/glue/gl.h>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace
{

/// The connection to EGL, opened on first use and kept until the process ends.
struct Connection {
    EGLDisplay display = EGL_NO_DISPLAY;
    EGLConfig config = nullptr;
    char const* problem = nullptr;

    Connection()
    {
        if (!openSurfaceless() && !openDefault())
            problem =
                "EGL finds no display driver. Install Mesa's: apt-get install libegl-mesa0 libgl1-mesa-dri";
        else if (!chooseConfig())
            problem =
                "EGL offers no 24 bit colour buffer for OpenGL. Install Mesa's software driver: apt-get "
                "install libgl1-mesa-dri";
    }

    bool openSurfaceless()
    {
        char const* extensions = eglQueryString(EGL_NO_DISPLAY, EGL_EXTENSIONS);
        auto const getPlatformDisplay =
            reinterpret_cast<PFNEGLGETPLATFORMDISPLAYEXTPROC>(eglGetProcAddress("eglGetPlatformDisplayEXT"));
        if (extensions == nullptr || std::strstr(extensions, "EGL_MESA_platform_surfaceless") == nullptr ||
            getPlatformDisplay == nullptr)
            return false;
        display = getPlatformDisplay(EGL_PLATFORM_SURFACELESS_MESA, nullptr, nullptr);
        return display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) == EGL_TRUE;
    }

    bool openDefault()
    {
        display = eglGetDisplay(EGL_DEFAULT_DISPLAY);
        return display != EGL_NO_DISPLAY && eglInitialize(display, nullptr, nullptr) == EGL_TRUE;
    }

    bool chooseConfig()
    {
        EGLint const wanted[] = {EGL_SURFACE_TYPE,
                                 EGL_PBUFFER_BIT,
                                 EGL_RENDERABLE_TYPE,
                                 EGL_OPENGL_BIT,
                                 EGL_RED_SIZE,
                                 8,
                                 EGL_GREEN_SIZE,
                                 8,
                                 EGL_BLUE_SIZE,
                                 8,
                                 EGL_DEPTH_SIZE,
                                 24,
                                 EGL_NONE};
        EGLint count = 0;
        return eglChooseConfig(display, wanted, &config, 1, &count) == EGL_TRUE && count > 0 &&
               eglBindAPI(EGL_OPENGL_API) == EGL_TRUE;
    }
};

Connection const& connection()
{
    static Connection const theOne;
    return theOne;
}

/// One context with its buffer, and what was current before it.
struct Context {
    EGLSurface surface = EGL_NO_SURFACE;
    EGLContext context = EGL_NO_CONTEXT;
    EGLSurface drawBefore = EGL_NO_SURFACE;
    EGLSurface readBefore = EGL_NO_SURFACE;
    EGLContext contextBefore = EGL_NO_CONTEXT;

    Context(unsigned width, unsigned height)
    {
        Connection const& egl = connection();
        if (egl.problem != nullptr)
            return;
        EGLint const size[] = {EGL_WIDTH, static_cast<EGLint>(width), EGL_HEIGHT, static_cast<EGLint>(height),
                               EGL_NONE};
        surface = eglCreatePbufferSurface(egl.display, egl.config, size);
        context = eglCreateContext(egl.display, egl.config, EGL_NO_CONTEXT, nullptr);
    }
    ~Context()
    {
        if (surface != EGL_NO_SURFACE)
            eglDestroySurface(connection().display, surface);
        if (context != EGL_NO_CONTEXT)
            eglDestroyContext(connection().display, context);
    }
    Context(Context const&) = delete;
    Context& operator=(Context const&) = delete;

    bool isComplete() const { return surface != EGL_NO_SURFACE && context != EGL_NO_CONTEXT; }
};

cc_glglue_offscreen_data createContext(unsigned width, unsigned height)
{
    auto context = std::make_unique<Context>(width, height);
    return context->isComplete() ? context.release() : nullptr;
}

SbBool makeCurrent(cc_glglue_offscreen_data data)
{
    auto* context = static_cast<Context*>(data);
    context->drawBefore = eglGetCurrentSurface(EGL_DRAW);
    context->readBefore = eglGetCurrentSurface(EGL_READ);
    context->contextBefore = eglGetCurrentContext();
    return eglMakeCurrent(connection().display, context->surface, context->surface, context->context) ==
           EGL_TRUE;
}

void reinstatePrevious(cc_glglue_offscreen_data data)
{
    auto const* context = static_cast<Context const*>(data);
    eglMakeCurrent(connection().display, context->drawBefore, context->readBefore, context->contextBefore);
}

void destroyContext(cc_glglue_offscreen_data data)
{
    delete static_cast<Context*>(data);
}

} // namespace

void EglOffscreen::install()
{
    // The toolkit asks GLX which context is current, and GLX knows nothing of EGL's.
    setenv("COIN_GL_NO_CURRENT_CONTEXT_CHECK", "1", 1);
    // The same picture on every machine, whatever its graphics card.
    setenv("LIBGL_ALWAYS_SOFTWARE", "1", 0);
    static cc_glglue_offscreen_cb_functions functions = {createContext, makeCurrent, reinstatePrevious,
                                                         destroyContext};
    cc_glglue_context_set_offscreen_cb_functions(&functions);
}

char const* EglOffscreen::missing()
{
    if (connection().problem != nullptr)
        return connection().problem;
    return Context(16, 16).isComplete() ? nullptr
                                        : "EGL can't make an OpenGL context. Install Mesa's software driver: "
                                          "apt-get install libgl1-mesa-dri";
}
