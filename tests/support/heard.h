#ifndef TESTS_SUPPORT_HEARD_H
#define TESTS_SUPPORT_HEARD_H

#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <mainControl/api/notification.h>

/** What a callback was called with. */
struct Heard {
    const char *by;
    int32_t status;
    std::string areaCode;
    std::string cellId;

    bool operator==(const Heard &other) const
    {
        return std::string(by) == other.by && status == other.status && areaCode == other.areaCode &&
               cellId == other.cellId;
    }
};

inline std::ostream &operator<<(std::ostream &out, const Heard &heard)
{
    return out << heard.by << ' ' << heard.status << " \"" << heard.areaCode << "\" \"" << heard.cellId << '"';
}

/** Listens with one callback for each kind of registration, stored without a registration; puts those before back. */
class Listeners {
  public:
    Listeners()
    {
        calls().clear();
        listen();
    }
    ~Listeners()
    {
        g_pFnCregNotifyCallBack = creg_;
        g_pFnCeregNotifyCallBack = cereg_;
        g_pFnCgregNotifyCallBack = cgreg_;
    }
    Listeners(const Listeners &) = delete;
    Listeners &operator=(const Listeners &) = delete;

    static void creg(int32_t status, char *areaCode, char *cellId) { note("creg", status, areaCode, cellId); }
    static void cereg(int32_t status, char *areaCode, char *cellId) { note("cereg", status, areaCode, cellId); }
    static void cgreg(int32_t status, char *areaCode, char *cellId) { note("cgreg", status, areaCode, cellId); }

    static void listen()
    {
        g_pFnCregNotifyCallBack = creg;
        g_pFnCeregNotifyCallBack = cereg;
        g_pFnCgregNotifyCallBack = cgreg;
    }
    static void stopListening()
    {
        g_pFnCregNotifyCallBack = nullptr;
        g_pFnCeregNotifyCallBack = nullptr;
        g_pFnCgregNotifyCallBack = nullptr;
    }

    /** Expects exactly these calls since it was last asked. */
    static void expect(const std::vector<Heard> &expected, const std::string &of)
    {
        EXPECT_EQ(calls(), expected) << of;
        calls().clear();
    }

  private:
    static std::vector<Heard> &calls()
    {
        static std::vector<Heard> all;
        return all;
    }
    static void note(const char *by, int32_t status, const char *areaCode, const char *cellId)
    {
        calls().push_back({by, status, areaCode, cellId});
    }

    RegistrationCallback creg_ = g_pFnCregNotifyCallBack;
    RegistrationCallback cereg_ = g_pFnCeregNotifyCallBack;
    RegistrationCallback cgreg_ = g_pFnCgregNotifyCallBack;
};

#endif
