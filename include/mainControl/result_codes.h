/** Result codes of the API, of the wrappers and of the parser. */
#ifndef MAINCONTROL_RESULT_CODES_H
#define MAINCONTROL_RESULT_CODES_H

/** Every function of this library that returns uint32_t returns one of these numbers. Two of them stand for more
 *  than one cause; the functions that return them say which. */
typedef enum ResultCode {
    UNI_ERROR_SUCCESS = 0,
    /** The command could not be sent, its reply not parsed, or its final result was not OK. */
    UNI_ERROR_FALSE = 1,
    /** An argument is NULL or out of range. */
    UNI_ERROR_INVALID_PARAMETER = 13,
    /** The caller's buffer is smaller than the value to be returned. */
    UNI_ERROR_STRING_SIZE_TOO_SMALL = 18,
    /** Parser: no line break or no known final result in the reply. Table look-ups: no such row. */
    UNI_ERROR_BK_FAIL1 = 19,
    /** Parser: NULL text or record. */
    UNI_ERROR_BK_INVALID_ARG = 20,
    /** The modem reported a wrong password. */
    UNI_ERROR_SETTING_CPIN_INCORRECT_PASS = 24,
    /** The modem asks for the PUK. */
    UNI_ERROR_SETTING_CPIN_PUKPASS_REQUIRED = 25,
    UNI_ERROR_SETTING_SIM_FAILURE = 26,
    UNI_ERROR_SETTING_SIM_BUSY = 27,
    UNI_ERROR_SETTING_SIM_NOT_INSERTED = 28,
    /** A +CME ERROR that none of the other codes names. */
    UNI_ERROR_SETTING_UNKNOWN = 29,
    /** The PIN status could not be read from the modem. */
    UNI_ERROR_COMM_FAILURE = 32
} ResultCode;

#endif
