/* The shortest program that uses the library: almost all instructions that it executes are the
 * loader's. */
#include <ky_names.h>

int main(void)
{
    return ky_status_str(KY_STATUS_SUCCESS)[0] == 'S' ? 0 : 1;
}
