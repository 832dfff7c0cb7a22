/* A host that is all libraries, on a machine where no AT server runs. */
#include <mainControl_host/at_client.h>
#include <stdio.h>
#include <string.h>

#include <mainControl/mainControl.h>

static int failures = 0;

static void expect(int holds, const char *what)
{
    if (holds) return;
    printf("FAILED: %s\n", what);
    ++failures;
}

int main(void)
{
    KR_setCurrentPlatform(PF_QC_LTE);
    expect(KR_startAT() == UNI_ERROR_FALSE, "without a server the send fails");
    expect(ClientLastResult() == CLIENT_NO_SERVER, "and the client knows why");
    expect(strstr(ClientLastError(), "nobody.sock") != NULL, "and where");

    expect(ClientIsSafeInQuotes("internet") == 1, "a name is safe in quotes");
    expect(ClientIsSafeInQuotes("1\";+CFUN=0") == 0, "a second command is not");

    char name[32] = "";
    expect(KR_parseSPNName("4B6F72611B65FFFF", name) == UNI_ERROR_SUCCESS, "a name is decoded");
    expect(strcmp(name, "Kora\xE2\x82\xAC") == 0, "and reads Kora");
    char operators[16] = "";
    expect(KR_spnFriendOperlistInvert("64F000", operators) == UNI_ERROR_SUCCESS, "a list is inverted");
    expect(strcmp(operators, "460F00") == 0, "pair by pair");

    int32_t pinLeft = 0;
    int32_t pukLeft = 0;
    expect(KR_verifyPIN(1, "48151623", &pinLeft, &pukLeft) == UNI_ERROR_FALSE, "a PIN is not sent");
    return failures == 0 ? 0 : 1;
}
