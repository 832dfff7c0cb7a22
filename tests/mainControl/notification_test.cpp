// The callbacks that a host sets, and how the first of them opens the road for reports.

#include "tests/support/api_call.h"
#include "tests/support/heard.h"

namespace {

using scripted::Host;

struct Setter {
    const char *function;
    uint32_t (*call)(RegistrationCallback);
    RegistrationCallback *stored;

    [[nodiscard]] std::string line(const char *behindName) const { return std::string(function) + behindName; }
};

const Setter kCreg = {"KR_setCregNotifyCallback", KR_setCregNotifyCallback, &g_pFnCregNotifyCallBack};
const Setter kCereg = {"KR_setCeregNotifyCallback", KR_setCeregNotifyCallback, &g_pFnCeregNotifyCallBack};
const Setter kCgreg = {"KR_setCgregNotifyCallback", KR_setCgregNotifyCallback, &g_pFnCgregNotifyCallBack};

/** What the host is asked for by one call, and answers. */
struct Registration {
    bool isInitialised = false; ///< ClientInit() is called
    int initResult = 0;
    bool isInstalled = false; ///< SetClientProcRecvCallback() is called
    int installResult = 0;

    [[nodiscard]] bool succeeds() const { return initResult == 0 && installResult == 0; }
    void script(Host &host) const
    {
        if (isInitialised) host.expectClientInit(initResult);
        if (isInstalled) host.expectCallbackInstall(installResult);
    }
    void expectReceiver() const
    {
        if (isInstalled) {
            EXPECT_EQ(Host::receiver(), ProcessMainControlAtCallback);
        }
    }
};

constexpr Registration kNothing = {};

void other(int32_t /*status*/, char * /*areaCode*/, char * /*cellId*/) {}

void expectSet(const Setter &setter, RegistrationCallback callback, const Registration &registration)
{
    Host host;
    registration.script(host);
    EXPECT_EQ(setter.call(callback), registration.succeeds() ? 0U : 1U) << setter.function;
    EXPECT_EQ(*setter.stored, callback) << setter.function;
    Log()
        .api(setter.line("-in"))
        .api(setter.line(registration.succeeds() ? "-return UNI_ERROR_SUCCESS"
                                                 : "-return UNI_ERROR_FALSE-setAtCallbackRegist failed"))
        .expectFrom(host);
    registration.expectReceiver();
}

void expectNullRefused(const Setter &setter, RegistrationCallback stored)
{
    Host host;
    *setter.stored = stored;
    EXPECT_EQ(setter.call(nullptr), UNI_ERROR_FALSE) << setter.function;
    EXPECT_EQ(*setter.stored, stored) << setter.function;
    Log().api(setter.line("-in")).api(setter.line("-return UNI_ERROR_FALSE-pCallback == NULL")).expectFrom(host);
}

void expectRegist(const Registration &registration)
{
    Host host;
    registration.script(host);
    EXPECT_EQ(setAtCallbackRegist(), registration.succeeds() ? 0U : 1U);
    Log().expectFrom(host);
    registration.expectReceiver();
}

// What has succeeded once is never done again in this process, so all of it is one test, in this order.
TEST(Setters, RegisterOnceForTheProcess)
{
    const Listeners listeners;
    Listeners::stopListening();
    for (const Setter &setter : {kCreg, kCereg, kCgreg}) {
        expectNullRefused(setter, nullptr);
        expectNullRefused(setter, other);
        *setter.stored = nullptr;
    }

    const Registration noClient = {.isInitialised = true, .initResult = -1};
    expectSet(kCreg, Listeners::creg, noClient);
    EXPECT_EQ(g_pFnCeregNotifyCallBack, nullptr);
    EXPECT_EQ(g_pFnCgregNotifyCallBack, nullptr);
    expectSet(kCereg, other, {.isInitialised = true, .initResult = 1});
    expectSet(kCgreg, Listeners::cgreg, {.isInitialised = true, .initResult = INT32_MIN});
    expectRegist(noClient);
    expectRegist(noClient);

    expectSet(kCereg, Listeners::cereg, {.isInitialised = true, .isInstalled = true, .installResult = -1});
    expectSet(kCreg, other, {.isInstalled = true, .installResult = 1});
    expectSet(kCgreg, other, {.isInstalled = true, .installResult = 2});
    expectRegist({.isInstalled = true, .installResult = INT32_MAX});

    expectSet(kCereg, other, {.isInstalled = true});
    for (const Setter &setter : {kCreg, kCereg, kCgreg}) {
        expectSet(setter, Listeners::creg, kNothing);
        expectSet(setter, other, kNothing);
        expectNullRefused(setter, other);
    }
    expectRegist(kNothing);
    expectRegist(kNothing);
}

} // namespace
