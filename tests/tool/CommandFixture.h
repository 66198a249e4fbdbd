#pragma once

#include "support/ModelTexts.h"
#include "support/Process.h"
#include "support/TemporaryFolder.h"

#include <algorithm>
#include <functional>
#include <gmock/gmock.h>
#include <string>
#include <vector>

using Words = std::vector<std::string>;

// A model in which every option of the export makes a difference.
inline std::string sensitiveModel()
{
    const std::string place = "'projections':[{'diagram':'d','x':100,'y':200,'width':70,'height':50";
    return model(
        "'types':[{'id':'t','name':'Label','dataType':'VARCHAR','length':10}],'childPackages':[{'name':'Sales',"
        "'modelElements':[{'kind':'class','id':'a','name':'Customer','attributes':[{'id':'x','name':'owner','type':'t'}"
        ","
        "{'name':'title','type':'t'}],'keys':[{'id':'k','kind':'foreignKey','attributes':['x']}]," +
        place + "}]},{'kind':'class','id':'b','name':'Order'," + place +
        "}]},{'kind':'association','id':'s','name':'places','constraint':'{ordered}'," + place +
        ",'vertices':'(10,20)\\r\\n(90,80)'}],'roles':[{'participant':'a','key':'k'," + place +
        ",'vertices':''}]},{'participant':'b'," + place +
        ",'vertices':''}]}]}],'diagrams':[{'id':'d','name':'Main','elements':"
        "['a','b','s']}]},{'name':'a\\n\\\\'}]");
}

// Says where two long texts differ instead of showing them.
inline testing::AssertionResult isSame(const std::string& text, const std::string& expected)
{
    const auto at = std::mismatch(text.begin(), text.end(), expected.begin(), expected.end()).first - text.begin();
    return (text == expected ? testing::AssertionSuccess() : testing::AssertionFailure())
           << text.size() << " bytes, expected " << expected.size() << ", different from byte " << at << " on";
}

class Command : public testing::Test {
protected:
    Command()
    {
        folder.write("m.json", sensitiveModel());
        folder.write("broken.json", model("'types':{}"));
    }

    [[nodiscard]] ProcessResult run(const Words& arguments, const std::function<void()>& prepare = {},
                                    const std::string& input = "") const
    {
        return runProcess({PETAL_COMMAND, arguments, folder.path(), input, prepare});
    }
    // The bytes that the export of the model with these options gives.
    [[nodiscard]] std::string exported(const Words& options = {}) const
    {
        Words arguments = {"export", "m.json", "-o", "-"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ProcessResult result = run(arguments);
        EXPECT_EQ(result.exitCode, 0) << testing::PrintToString(options) << result.errors;
        EXPECT_EQ(result.errors, "");
        return result.output;
    }

    TemporaryFolder folder;
};
