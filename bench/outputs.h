#ifndef BENCH_OUTPUTS_H
#define BENCH_OUTPUTS_H

#include <cstdint>

#include <mainControl/records.h>

/** Where the calls of the library and of the port leave what they read. */
namespace bench {

inline char text[10240];
inline int32_t number;
inline CregPara creg;
inline PdpContextList contexts;
inline ScanNetworkList networks;
inline AtClientRes report;

inline void hear(int32_t status, char * /*areaCode*/, char * /*cellId*/)
{
    number = status;
}

} // namespace bench

#endif
