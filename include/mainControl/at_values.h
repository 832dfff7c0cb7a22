/** Values of AT commands as the standard numbers them. Functions take and give them as int32_t, since a modem may know
 *  more of them than stand here. */
#ifndef MAINCONTROL_AT_VALUES_H
#define MAINCONTROL_AT_VALUES_H

#ifdef __cplusplus
extern "C" {
#endif

/** Functionality level of the phone. AT+CFUN, 3GPP TS 27.007 8.2. */
typedef enum AtFunctionLevel {
    AT_CFUN_MINIMUM = 0,  /**< no radio; many modems keep the SIM */
    AT_CFUN_FULL = 1,     /**< everything on */
    AT_CFUN_RADIO_OFF = 4 /**< neither transmits nor receives */
} AtFunctionLevel;

/** What the modem says of its own errors. AT+CMEE, 3GPP TS 27.007 9.1. */
typedef enum AtErrorForm {
    AT_CMEE_OFF = 0, /**< a bare ERROR */
    AT_CMEE_NUMBERS = 1,
    AT_CMEE_TEXTS = 2
} AtErrorForm;

/** How the operator is selected. AT+COPS, 3GPP TS 27.007 7.3. */
typedef enum AtOperatorMode {
    AT_COPS_AUTOMATIC = 0,
    AT_COPS_MANUAL = 1,
    AT_COPS_DEREGISTER = 2,
    AT_COPS_FORMAT_ONLY = 3, /**< selects nothing, sets the format of AT+COPS? */
    AT_COPS_MANUAL_THEN_AUTOMATIC = 4
} AtOperatorMode;

/** How an operator is named. AT+COPS, 3GPP TS 27.007 7.3. */
typedef enum AtOperatorFormat {
    AT_COPS_LONG_NAME = 0,
    AT_COPS_SHORT_NAME = 1,
    AT_COPS_NUMERIC = 2 /**< MCC and MNC */
} AtOperatorFormat;

/** What an operator of a scan is to the modem. AT+COPS=?, 3GPP TS 27.007 7.3. */
typedef enum AtOperatorStatus {
    AT_OPERATOR_UNKNOWN = 0,
    AT_OPERATOR_AVAILABLE = 1,
    AT_OPERATOR_CURRENT = 2,
    AT_OPERATOR_FORBIDDEN = 3
} AtOperatorStatus;

/** Access technology. AT+COPS, AT+CREG and its kin, 3GPP TS 27.007 7.3. */
typedef enum AtAccessTechnology {
    AT_ACT_GSM = 0,
    AT_ACT_GSM_COMPACT = 1,
    AT_ACT_UTRAN = 2,
    AT_ACT_GSM_EGPRS = 3,
    AT_ACT_UTRAN_HSDPA = 4,
    AT_ACT_UTRAN_HSUPA = 5,
    AT_ACT_UTRAN_HSPA = 6, /**< HSDPA and HSUPA */
    AT_ACT_E_UTRAN = 7
} AtAccessTechnology;

/** What is reported of the registration. AT+CREG, AT+CGREG and AT+CEREG, 3GPP TS 27.007 7.2, 10.1.20 and 10.1.22. */
typedef enum AtRegistrationReports {
    AT_REPORTS_OFF = 0,
    AT_REPORTS_STATUS = 1,
    AT_REPORTS_LOCATION = 2 /**< the status and the place */
} AtRegistrationReports;

/** State of the registration. AT+CREG, AT+CGREG and AT+CEREG, 3GPP TS 27.007 7.2, 10.1.20 and 10.1.22. */
typedef enum AtRegistrationStatus {
    AT_REGISTRATION_NONE = 0, /**< not registered, and not searching */
    AT_REGISTRATION_HOME = 1,
    AT_REGISTRATION_SEARCHING = 2,
    AT_REGISTRATION_DENIED = 3,
    AT_REGISTRATION_UNKNOWN = 4,
    AT_REGISTRATION_ROAMING = 5
} AtRegistrationStatus;

/** Attachment to the packet domain. AT+CGATT, 3GPP TS 27.007 10.1.9. */
typedef enum AtAttachment { AT_CGATT_DETACHED = 0, AT_CGATT_ATTACHED = 1 } AtAttachment;

/** What is done with a facility lock. AT+CLCK, 3GPP TS 27.007 7.4. */
typedef enum AtLockMode { AT_CLCK_UNLOCK = 0, AT_CLCK_LOCK = 1, AT_CLCK_QUERY = 2 } AtLockMode;

/** State of a facility lock, as a query tells it. AT+CLCK, 3GPP TS 27.007 7.4. */
typedef enum AtLockStatus { AT_CLCK_NOT_ACTIVE = 0, AT_CLCK_ACTIVE = 1 } AtLockStatus;

/** Classes of information that a facility lock is for, which add up. AT+CLCK, 3GPP TS 27.007 7.4. */
typedef enum AtLockClass {
    AT_CLCK_CLASS_VOICE = 1,
    AT_CLCK_CLASS_DATA = 2,
    AT_CLCK_CLASS_FAX = 4,
    AT_CLCK_CLASS_ALL = 7 /**< voice, data and fax: what counts where no class is sent */
} AtLockClass;

/** Facilities. AT+CLCK and AT+CPWD, 3GPP TS 27.007 7.4 and 7.5. */
#define AT_FACILITY_SIM "SC"     /**< the SIM asks for its PIN */
#define AT_FACILITY_NETWORK "PN" /**< network personalisation */

/** Commands to the SIM. AT+CRSM, 3GPP TS 27.007 8.18. */
typedef enum AtSimCommand {
    AT_CRSM_READ_BINARY = 176,
    AT_CRSM_GET_RESPONSE = 192,
    AT_CRSM_UPDATE_BINARY = 214,
    AT_CRSM_STATUS = 242
} AtSimCommand;

/** The first status word of a SIM that has carried a command out. ETSI TS 102 221 10.2.1. */
enum { AT_CRSM_SW1_DONE = 0x90 };

/** Elementary files of the SIM. ETSI TS 102 221 13.2 for the ICCID, 3GPP TS 31.102 4.2 for the others. */
typedef enum AtSimFile {
    AT_SIM_FILE_ICCID = 0x2FE2,
    AT_SIM_FILE_IMSI = 0x6F07,
    AT_SIM_FILE_PROVIDER_NAME = 0x6F46, /**< display condition and service provider name */
    AT_SIM_FILE_ADMINISTRATIVE = 0x6FAD,
    AT_SIM_FILE_PROVIDER_DISPLAY = 0x6FCD /**< networks in which the name of the service provider is shown */
} AtSimFile;

/** Signal figures that are not known. AT+CSQ and AT+CESQ, 3GPP TS 27.007 8.5 and 8.69. */
enum {
    AT_SIGNAL_UNKNOWN = 99,          /**< all of AT+CSQ; RSSI and error rate of AT+CESQ */
    AT_SIGNAL_UNKNOWN_EXTENDED = 255 /**< the other four of AT+CESQ */
};

#ifdef __cplusplus
}
#endif

#endif
