// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <array>

/// The texts of the demonstration store.
namespace demo {

inline constexpr const char* organisation = "Larkmoor Quality Services";

struct Respondent {
    const char* name;
    const char* designation;
};

struct Customer {
    const char* name;
    const char* address;
    const char* phone;
    const char* domain; ///< of all its e-mail addresses
    std::array<Respondent, 3> respondents;
    double bias; ///< added to all scores of its respondents
};

inline constexpr Customer customers[] = {
    {"Aldermere Foods",
     "12 Quay Street, Norhaven",
     "+44 1632 960110",
     "aldermere.example",
     {{{"Hannah Whitlock", "Head of Purchasing"},
       {"Tom Okafor", "Plant Manager"},
       {"Irene Sólveig", "Quality Lead"}}},
     0.4},
    {"Brückner Maschinenbau",
     "Lindenallee 8, Talheim",
     "+49 30 23125 014",
     "brueckner.example",
     {{{"Jürgen Maas", "Einkauf"}, {"Petra Lindqvist", "Production"}, {"Ali Demir", "Maintenance"}}},
     -0.6},
    {"Clairval Santé",
     "4 rue des Tanneurs, Montclair",
     "+33 1 99 00 42 17",
     "clairval.example",
     {{{"Élodie Marchand", "Achats"}, {"Marc Besson", "Logistics"}, {"Noémie Fort", "Laboratory"}}},
     0.0},
    {"Dunmore Textiles",
     "Mill Road 71, Dunmore",
     "+353 1 555 0136",
     "dunmore.example",
     {{{"Siobhán Keane", "Operations Director"}, {"Paul Reilly", "Buyer"}, {"Grace Tan", "Designer"}}},
     0.8},
    {"Eastgate Logistics",
     "Dock 5, Eastgate Terminal",
     "+44 1632 960177",
     "eastgate.example",
     {{{"Victor Adeyemi", "Fleet Manager"}, {"Lena Novak", "Dispatch"}, {"Sam Hollis", "Finance"}}},
     -0.2},
};

/// A customer of many respondents, some of whom do not answer.
struct LargeCustomer {
    const char* name;
    const char* address;
    const char* phone;
    const char* domain;
    std::array<Respondent, 12> respondents;
};

inline constexpr LargeCustomer largeCustomer{"Westmoor Hospitals",
                                             "Infirmary Road, Westmoor",
                                             "+44 1632 960775",
                                             "westmoor.example",
                                             {{{"Agnes Holloway", "Head of Supply"},
                                               {"Bashir Rahman", "Theatre Manager"},
                                               {"Carla Novák", "Head of Pharmacy"},
                                               {"Declan Byrne", "Facilities"},
                                               {"Eszter Varga", "Ward Manager"},
                                               {"Femi Adeyemi", "Procurement"},
                                               {"Greta Lindholm", "Sterile Services"},
                                               {"Henrik Dahl", "Finance"},
                                               {"Ines Carvalho", "Laboratory"},
                                               {"Jonas Weber", "Medical Engineering"},
                                               {"Kirsty MacLeod", "Outpatients"},
                                               {"Luca Moretti", "Catering"}}}};

struct Parameter {
    const char* name;
    std::array<const char*, 4> scored;
    const char* open; ///< the Descriptive question
    std::array<const char*, 3> replies;
    double level;  ///< the mean score of the first quarter
    double trend;  ///< a quarter
    int weightage; ///< how much it matters to customers, 1 to 10
};

inline constexpr Parameter parameters[] = {
    {"Delivery",
     {{"Do our deliveries arrive on the agreed day?", "Are consignments complete when they arrive?",
       "Is the packaging suited to your way of unloading?", "Do we tell you early when a delivery is late?"}},
     "What should we change first about our deliveries?",
     {{"A delivery note by e-mail the day before.", "Fixed time slots, please.", "Nothing, it works well."}},
     5.6,
     0.5,
     9},
    {"Product Quality",
     {{"Do our products meet what was agreed?", "Is the quality the same from batch to batch?",
       "How satisfied are you with the life of our products?",
       "How do we compare with your other suppliers?"}},
     "Which product disappointed you, and how?",
     {{"The seals of the spring batch wore out early.", "None this quarter.",
       "Surface finish of the small housings varies."}},
     7.4,
     0.1,
     10},
    {"Price",
     {{"Is the price fair for what you receive?", "Are our quotations clear and complete?",
       "Do invoices agree with the quotation?", "Are our terms of payment acceptable?"}},
     "Where do you see room for a better price?",
     {{"Volume discounts for standing orders.", "Transport surcharges are hard to follow.",
       "Prices are in line with the market."}},
     5.9,
     -0.15,
     7},
    {"Communication",
     {{"Do you reach the right person at the first attempt?", "Are your questions answered within a day?",
       "Do we keep you informed about changes?", "Are our people courteous?"}},
     "How would you like to hear from us?",
     {{"One contact for everything.", "A short monthly summary.", "By phone when something is urgent."}},
     6.4,
     0.3,
     6},
    {"Technical Support",
     {{"Is help at hand when you need it?", "Do our engineers solve the problem at the first visit?",
       "Is the advice you get competent?", "Are spare parts available quickly?"}},
     "Tell us about a case that we could have handled better.",
     {{"The control unit took three visits in May.", "Spare parts for the old line took two weeks.",
       "We had no case this quarter."}},
     5.0,
     0.45,
     8},
    {"Complaint Handling",
     {{"Is it easy to place a complaint with us?", "Do we react to complaints fast enough?",
       "Are you told what was done about the cause?", "Was the outcome fair?"}},
     "What did you miss in our answer to your last complaint?",
     {{"The root cause.", "A date by which it is done.", "Nothing was missing."}},
     4.8,
     0.35,
     8},
    {"Documentation",
     {{"Are our manuals complete?", "Are drawings and data sheets up to date?",
       "Do you find what you look for in them?", "Are certificates delivered with the goods?"}},
     "Which document should we improve?",
     {{"The maintenance manual of the feeder.", "Certificates as one file an order.",
       "Translations lag behind."}},
     6.8,
     -0.05,
     4},
    {"Sales Staff",
     {{"Do our representatives know your business?", "Do they visit as often as you wish?",
       "Do they keep what they promise?", "Are offers made without delay?"}},
     "What do you expect of our representatives?",
     {{"Ideas, not only price lists.", "Fewer changes of contact.", "Keep going like this."}},
     7.0,
     0.0,
     5},
};

struct Action {
    int customer; ///< index
    int quarter;  ///< index of the survey that led to it
    const char* text;
    int daysToTarget;
    bool complete;
};

inline constexpr Action actions[] = {
    {0, 1, "Send the delivery note by e-mail on the day before each delivery.", 45, true},
    {0, 3, "Agree fixed unloading slots with the plant manager.", 60, true},
    {0, 5, "Review spare part stock for the filling line.", 90, false},
    {1, 0, "Name one contact for all technical questions.", 30, true},
    {1, 2, "Report the root cause within ten days of each complaint.", 60, true},
    {1, 5, "Replace the seals of the spring batch free of charge.", 30, false},
    {2, 2, "Deliver all certificates as one file an order.", 60, true},
    {2, 4, "Translate the maintenance manual of the feeder.", 120, false},
    {3, 1, "Quarterly design review with the customer's designers.", 90, true},
    {3, 5, "Offer a volume discount for standing orders.", 45, false},
    {4, 0, "Explain transport surcharges on each invoice.", 30, true},
    {4, 3, "Late deliveries: call dispatch before noon of the day before.", 30, true},
    {4, 5, "Second engineer on call at the terminal.", 60, false},
};

} // namespace demo
