// Ids of the command's own resources.
#ifndef TAMRIX_CLIENT_RESOURCE_IDS_H
#define TAMRIX_CLIENT_RESOURCE_IDS_H

// Strings that the browse command fills at run time, next to each other in one block of 16.
#define TITLE_STRING 16
#define FILTER_STRING 17

#ifdef __cplusplus
constexpr int kTitleString = TITLE_STRING;
constexpr int kFilterString = FILTER_STRING;
#endif

#endif
