#include "designs/TextFormats.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace {

std::string textCalled(const Texts& texts, std::string_view name)
{
    const auto found = std::ranges::find(texts.files, name, &design::WrittenFile::name);
    return found == texts.files.end() ? "no such file" : found->text;
}

} // namespace

// Whether Mermaid takes such texts is tried with itself where it is there.
TEST(Mermaid, WritesADiagramOfClasses)
{
    const Texts texts = textsOf(designWithEverything(), "mermaid");
    EXPECT_EQ(textCalled(texts, "Main"), R"(---
title: "Main"
---
classDiagram
  %% Sales
  class Order_item["Order item"]
  %% What was ordered.
  %% And by whom.
  class Order["Order#60;Item : list#60;int#62;#62;"] {
    <<entity, abstract>>
    -«key» /total : NUMBER(12) = #34;0#34;$
    +cancel(reason : String = none, out why) : Boolean*
  }
  class note_["note"] {
    <<interface>>
  }
  class Colour {
    <<enumeration>>
    RED = hex(FF)
    #45;green-
  }
  class Buyer {
    <<actor>>
  }
  class Contract
  class Stock {
    <<subsystem, package>>
  }
  namespace Stock_2 {
    class Shelf
  }
  Order_item "+items 0..#42; #123;ordered#125;" <--* "[position] 1" Order : holds
  Order .. Contract : holds
  Order_item .. Contract : holds
  class association {
    <<association>>
  }
  Buyer -- association
  Order -- association
  Shelf -- association
  Order_item ..|> note_
  note for Order_item "Some day"
  Order --|> note_
  Order ..> Stock : «use»
  note for Order "Never\nend note"
  note for Order "#64;enduml"
  note for Order "#123;x #62; 0#125;"
  note "A loose note"
)");
}

TEST(Mermaid, WritesSequencesAndStatesOfARoseFile)
{
    const std::pair<const char*, const char*> rows[] = {
        {"Steps", R"(---
title: "Steps"
---
sequenceDiagram
  %% Use Case View
  autonumber
  actor Customer as #58; Customer
  participant desk_Order as desk #58; Order<br/>#123;multi#125;
  Customer->>desk_Order: order
  activate Customer
  activate desk_Order
  desk_Order-)desk_Order: check
  desk_Order-->>Customer: receipt
  deactivate desk_Order
  deactivate Customer
  Note over desk_Order: (destroyed)
)"},
        {"Life of an order", R"(---
title: "Life of an order"
---
stateDiagram-v2
  %% Logical View#58;:Order#58;:States
  state "open" as open
  open : entry / reserve goods
  [*] --> open
  open --> [*] : paid
  open --> open
)"},
        {"Packing", R"(---
title: "Packing"
---
stateDiagram-v2
  %% Logical View#58;:Order#58;:States
  state "Store" as Store {
    state "pack" as pack
  }
  state "Office" as Office
  state state_ <<fork>>
  state complete <<choice>>
  note right of complete : complete?
  complete --> pack
  state_ --> complete
)"},
    };
    const Texts texts = textsOf(designIn("../../render/models/everything.mdl"), "mermaid");
    for (const auto& [name, text] : rows)
        EXPECT_EQ(textCalled(texts, name), text) << name;
    EXPECT_EQ(textCalled(texts, "Components"), "no such file");
}
