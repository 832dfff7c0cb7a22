#ifndef TESTS_SUPPORT_PLATFORMS_H
#define TESTS_SUPPORT_PLATFORMS_H

#include <cstdint>
#include <vector>

#include <mainControl/mainControl.h>

/** The platform in force, and the numbers to put there. */
namespace scripted {

/** Every platform that has a name, and numbers without one between them and on both sides. */
inline const std::vector<int32_t> kPlatforms = {0, PF_QC_LTE, 2, PF_MTK, PF_TSP, PF_SPEADTRUM, 7, -1};

/** Puts a platform in force for as long as it lives, and then the one before it. */
class OnPlatform {
  public:
    explicit OnPlatform(int32_t platform) { g_currentPlatform = platform; }
    ~OnPlatform() { g_currentPlatform = before_; }
    OnPlatform(const OnPlatform &) = delete;
    OnPlatform &operator=(const OnPlatform &) = delete;

  private:
    int32_t before_ = g_currentPlatform;
};

} // namespace scripted

#endif
