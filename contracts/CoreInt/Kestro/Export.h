#pragma once

/// Marks what a library shows to others; everything else is compiled with hidden visibility.
#define KESTRO_API __attribute__((visibility("default")))

#define KESTRO_COREINT_API KESTRO_API
#define KESTRO_CONFINT_API KESTRO_API
#define KESTRO_SETTINGS_API KESTRO_API
#define KESTRO_PROCINT_API KESTRO_API
#define KESTRO_FFWRAPPER_API KESTRO_API
#define KESTRO_CORELOCALIZATION_API KESTRO_API
#define KESTRO_DATAHELPERS_API KESTRO_API
