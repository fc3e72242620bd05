#pragma once

// All that a host of Vetlo includes.
//
//   #include "vetlo/vetlo.h"
//
//   vetlo::Component component(vetlo::FindComponentLibrary().file);
//   vetlo::Tamo tamo = component.NewTamo(platform);             // a vetlo::Platform of the host's
//   auto store = vetlo::OpenStore("home.qm", vetlo::StoreAccess::kReadOnly);
//   auto rows = store->OpenRecordset("ChartReportSubType");
//   vetlo::KeptStore kept(*store);                              // hears of what is left out
//   tamo.ShowChartReport(kept, *rows, 1, &chart, &report);      // see platform/display.h
//
// A host links the target vetlo_host and loads the library libvetlo.so, which it finds registered
// or beside itself. Failures are of the class vetlo::Failure.

#include "vetlo/host/chart_model.h"  // display objects that remember what they are to show
#include "vetlo/host/component.h"    // the library, and the component in it
#include "vetlo/host/document.h"
#include "vetlo/host/kept_store.h"            // what went wrong in a call that went on
#include "vetlo/host/tamo.h"                  // the fifteen operations
#include "vetlo/platform/form.h"              // what the dialogs are made of
#include "vetlo/platform/platform.h"          // what the host supplies
#include "vetlo/store/sqlite/sqlite_store.h"  // household stores
