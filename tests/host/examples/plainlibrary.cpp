// A library that is no Qt plugin; under another name it stands for a driver.
extern "C" __attribute__((visibility("default"))) int plainFunction();

int plainFunction()
{
    return 1;
}
