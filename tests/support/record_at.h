#ifndef TESTS_SUPPORT_RECORD_AT_H
#define TESTS_SUPPORT_RECORD_AT_H

/** The record at an address that is aligned for it, whatever the type of the address says. */
template <typename Record>
Record *recordAt(void *address)
{
    return static_cast<Record *>(address);
}

#endif
