// Eight suppressed statements between additions, compiled once per implementation, which WAY names.
#include <ky_common.h>

#if defined(WAY_IS_GLOG)
#include <glog/logging.h>
#define STATEMENT(text) VLOG(1) << text " " << a << " of " << b << " is up"
#elif defined(WAY_IS_FLOOR) // a load, a comparison and a branch each
[[gnu::used]] static uint32_t verbosity = 3;
[[gnu::cold, gnu::noinline]] static void say(const char* text, uint32_t a, uint32_t b)
{
    ky_log(31, "FLOOR", "%s %u of %u is up\n", text, a, b);
}
#define STATEMENT(text) (__builtin_expect(KY_LOAD(verbosity) >= 5U, 0) ? say(text, a, b) : (void)0)
#else
#define KY_LOG_MODULE "MODULE"
#define KY_LOG_VERBOSITY verbosity
[[gnu::used]] static uint32_t verbosity = KY_LOG_LEVEL_DEFAULT;
#define STATEMENT(text) KY_LOG_DEBUG(text " %u of %u is up\n", a, b)
#endif

KY_EXPORT uint32_t WAY(uint32_t a, uint32_t b);

uint32_t WAY(uint32_t a, uint32_t b)
{
    STATEMENT("port");
    a += b;
    STATEMENT("lag");
    a += b;
    STATEMENT("vport");
    a += b;
    STATEMENT("vlag");
    a += b;
    STATEMENT("tunnel");
    a += b;
    STATEMENT("trap");
    a += b;
    STATEMENT("route");
    a += b;
    STATEMENT("group");
    return a + b;
}
