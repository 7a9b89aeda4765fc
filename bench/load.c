/* The shortest program that uses the library: what it executes from its start to its end is, but
 * for a few instructions, what the loader does. */
#include <ky_names.h>

int main(void)
{
    return ky_status_str(KY_STATUS_SUCCESS)[0] == 'S' ? 0 : 1;
}
