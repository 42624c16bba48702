#include <math.h>
#include <stdio.h>

int main(void) {
    printf("%f\n", acos(-1.0));
    return 0;
}
