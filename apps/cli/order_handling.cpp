// The contents of the sample map: how a small supplier handles an order, checks credit, and ships.
#include "cli/sample_map.h"

namespace quorvel::cli {
namespace {

// Places of the pins on a letter page in landscape format, in inches. Under each Task there is space for its details,
// and the drawings end above the logo and the legend. A branch is further right than the Task that it leaves, so that
// its bend passes next to the text of the straight link; its link is dropped first, so that this text is over it.
constexpr double first = 1.4, second = 4.1, third = 6.8, fourth = 9.5, branchThird = 7.55, branchFourth = 9.75;
constexpr double upper = 6.35, lower = 3.2;

const std::string sales = "Sales Representative", credit = "Credit Controller", finance = "Finance Manager",
                  accounts = "Accounts Clerk", warehouse = "Warehouse Clerk", packer = "Packer",
                  purchasing = "Purchasing Clerk";

SamplePage orderPage() {
  return {
      .name = "OH Order handling",
      .title = "Order handling",
      .tasks =
          {
              {.place = {first, upper},
               .description = "Receive the order and record it",
               .responsible = sales,
               .supporting = {accounts},
               .time = 15,
               .timeUnits = "Minutes",
               .frequency = "Daily",
               .guidelines = "Record orders on the day they arrive;Ask for a delivery address",
               .resources = "Order form;Customer register"},
              {.place = {second, upper},
               .description = "Check the customer's credit",
               .responsible = credit,
               .supporting = {finance, accounts},
               .time = 1,
               .timeUnits = "Hours",
               .frequency = "Daily",
               .guidelines = "Credit policy",
               .opensPage = "CR Credit check",
               .opensTask = "CR01"},
              {.place = {third, upper},
               .description = "Confirm the order to the customer",
               .responsible = sales,
               .time = 10,
               .timeUnits = "Minutes",
               .frequency = "Daily",
               .resources = "Confirmation letter",
               .notes = "The confirmation names the delivery date."},
              {.place = {branchThird, lower},
               .description = "Tell the customer why the order is refused",
               .responsible = sales,
               .supporting = {credit},
               .time = 20,
               .timeUnits = "Minutes",
               .frequency = "Ad Hoc",
               .guidelines = "Call first, then write"},
              {.place = {branchFourth, lower},
               .description = "Close the order",
               .responsible = accounts,
               .time = 5,
               .timeUnits = "Minutes",
               .frequency = "Ad Hoc"},
              {.place = {first, lower},
               .description = "Send the invoice",
               .responsible = accounts,
               .time = 30,
               .timeUnits = "Minutes",
               .frequency = "Daily",
               .guidelines = "Invoice within two days of delivery",
               .resources = "Delivery note;Price list"},
              {.place = {second, lower},
               .description = "Record the payment and close the order",
               .responsible = accounts,
               .supporting = {finance},
               .time = 2,
               .timeUnits = "Weeks",
               .frequency = "Weekly",
               .guidelines = "Remind after 30 days"},
          },
      .connectors = {{.place = {fourth, upper}, .page = "SH Shipping", .task = "SH01"}},
      .links =
          {
              {"OH01", "OH02", "Order"},
              {"OH02", "OH04", "Refused"},
              {"OH02", "OH03", "Approved"},
              {"OH03", ">SH01", "Confirmed order"},
              {"OH04", "OH05", "Refusal"},
              {"OH06", "OH07", "Invoice"},
          },
  };
}

SamplePage creditPage() {
  return {
      .name = "CR Credit check",
      .title = "Credit check",
      .tasks =
          {
              {.place = {first, upper},
               .description = "Look up what the customer owes",
               .responsible = credit,
               .supporting = {accounts},
               .time = 10,
               .timeUnits = "Minutes",
               .frequency = "Daily",
               .resources = "Customer register;Open invoices"},
              {.place = {second, upper},
               .description = "Compare it with the credit limit",
               .responsible = credit,
               .time = 5,
               .timeUnits = "Minutes",
               .frequency = "Daily",
               .guidelines = "Credit policy"},
              {.place = {third, upper},
               .description = "Release the order",
               .responsible = credit,
               .time = 2,
               .timeUnits = "Minutes",
               .frequency = "Daily"},
              {.place = {branchThird, lower},
               .description = "Decide on credit above the limit",
               .responsible = finance,
               .supporting = {credit, sales},
               .time = 1.5,
               .timeUnits = "Hours",
               .frequency = "Weekly",
               .guidelines = "Credit policy;Two people decide above 10,000",
               .notes = "Without an answer within a day the order counts as refused."},
          },
      .connectors =
          {{.place = {fourth, upper}, .page = "OH Order handling", .task = "OH03"},
           {.place = {branchFourth, lower + 0.6}, .page = "OH Order handling", .task = "OH03", .end = ">approved"},
           {.place = {branchFourth, lower - 0.6}, .page = "OH Order handling", .task = "OH04"}},
      .links =
          {
              {"CR01", "CR02", "Balance"},
              {"CR02", "CR04", "Above limit"},
              {"CR02", "CR03", "Below limit"},
              {"CR03", ">OH03", "Released"},
              {"CR04", ">approved", "Approved"},
              {"CR04", ">OH04", "Refused"},
          },
  };
}

SamplePage shippingPage() {
  return {
      .name = "SH Shipping",
      .title = "Shipping",
      .tasks =
          {
              {.place = {first, upper},
               .description = "Pick the goods",
               .responsible = warehouse,
               .supporting = {packer},
               .time = 45,
               .timeUnits = "Minutes",
               .frequency = "Hourly",
               .guidelines = "Oldest stock first",
               .resources = "Pick list;Forklift"},
              {.place = {second, upper},
               .description = "Check the goods against the order",
               .responsible = warehouse,
               .time = 15,
               .timeUnits = "Minutes",
               .frequency = "Hourly",
               .guidelines = "Whoever picked does not check"},
              {.place = {third, upper},
               .description = "Pack the goods and hand them to the carrier",
               .responsible = packer,
               .supporting = {warehouse},
               .time = 30,
               .timeUnits = "Minutes",
               .frequency = "Hourly",
               .resources = "Boxes;Labels;Carrier's booking form"},
              {.place = {branchThird, lower},
               .description = "Order the missing goods",
               .responsible = purchasing,
               .supporting = {warehouse},
               .time = 1,
               .timeUnits = "Days",
               .frequency = "Recurring",
               .guidelines = "Approved suppliers only"},
              {.place = {branchFourth, lower},
               .description = "Tell the customer the new delivery date",
               .responsible = sales,
               .time = 10,
               .timeUnits = "Minutes",
               .frequency = "Recurring"},
          },
      .connectors = {{.place = {fourth, upper}, .page = "OH Order handling", .task = "OH06"}},
      .links =
          {
              {"SH01", "SH02", "Goods"},
              {"SH02", "SH04", "Missing"},
              {"SH02", "SH03", "Complete"},
              {"SH03", ">OH06", "Delivery note"},
              {"SH04", "SH05", "Delay"},
          },
  };
}

}  // namespace

const std::vector<SamplePage>& orderHandling() {
  static const std::vector<SamplePage> pages{orderPage(), creditPage(), shippingPage()};
  return pages;
}

std::string orderHandlingRoles() {
  // In the order of the alphabet, each with its separator before it, as the list of roles is kept.
  std::string list;
  for (const std::string& role : {accounts, credit, finance, packer, purchasing, sales, warehouse}) list += ";" + role;
  return list;
}

}  // namespace quorvel::cli
