#pragma once

#include <algorithm>
#include <string>
#include <string_view>

/// Model files as tests write them: with apostrophes for double quotes.

inline std::string json(std::string text)
{
    std::replace(text.begin(), text.end(), '\'', '"');
    return text;
}

/// A model with these keys besides those that every model must have.
inline std::string model(const std::string& keys)
{
    return json("{'format':'kiv-model','version':1" + (keys.empty() ? "" : "," + keys) + "}");
}

/// A model whose one element is a class with these keys.
inline std::string modelOfClass(const std::string& keys)
{
    return model("'modelElements':[{'kind':'class'," + keys + "}]");
}

/// `text` with the first `place` in it replaced.
inline std::string with(std::string text, std::string_view place, std::string_view replacement)
{
    return text.replace(text.find(place), place.size(), replacement);
}

/// A model object with every key that all of them have; the values follow from its id.
inline std::string modelObject(const std::string& id, const std::string& keys = "")
{
    return "{'id':'" + id + "','name':'" + id + " \\u00e9','description':'" + id + " text','stereotype':'" + id +
           " kind','modelLevel':3,'notes':['" + id +
           " note',''],'projections':[{'diagram':'cd','y':" + std::to_string(id.size()) + "}]" +
           (keys.empty() ? "" : "," + keys) + "}";
}

/// A model with every kind of object and every key.
inline std::string everything()
{
    const std::string argument = "'position':-32768,'type':'t1','initialValue':'= 1'";
    const std::string attribute = argument + ",'visibility':1,'containment':0,'isStatic':true,'isDerived':true";
    const std::string operation = "'position':32767,'visibility':1,'concurrency':2,'isAbstract':true,'isFriend':true,"
                                  "'isStatic':true,'isVirtual':true,'semantics':'sem','preCondition':'pre',"
                                  "'postCondition':'post','returnType':'t2','arguments':[" +
                                  modelObject("x1", argument) + "]";
    const std::string class_ =
        "'kind':'class','classType':9,'visibility':1,'concurrency':2,'space':4,'isAbstract':true,'isPersistent':true,"
        "'cardinality':'0..n','attributes':[" +
        modelObject("a1", attribute + ",'keyMappings':[{'key':'k1','counterpart':'t1'}]") + ",{'id':'a2'}]" +
        ",'operations':[" + modelObject("o1", operation) + "],'parameters':[" + modelObject("y1", argument) +
        "],'keys':[" + modelObject("k1", "'kind':'foreignKey','attributes':['a2','q1']") + ",{'kind':'candidateKey'}]";
    const std::string role =
        "'participant':'c1','multiplicity':{'lower':2,'upper':-1},'isAggregateEnd':true,'isNavigable':true,"
        "'isStatic':true,'isFriend':true,'visibility':1,'containment':0,'constraint':'{r}','key':'k1','qualifiers':[" +
        modelObject("q1", attribute) + "]";
    const std::string line = "{'diagram':'cd','x':1,'y':-2,'width':3,'height':4,'lineColor':5,'fillColor':6,"
                             "'fontColor':7,'fontName':'Mono','fontSize':8,'vertices':'(1,2)\\r\\n(3,4)'}";
    const std::string elements =
        modelObject("c1", class_) + "," +
        modelObject("as", "'kind':'association','isAggregation':true,'constraint':'{a}','associationClass':'c1',"
                          "'roles':[" +
                              modelObject("r1", role) + "]") +
        "," +
        modelObject("ge", "'kind':'generalization','visibility':2,'isVirtual':true,'isFriend':true,"
                          "'supertypes':['c1',null],'subtypes':[null,'c1']") +
        "," + modelObject("de", "'kind':'dependency','client':'c1','supplier':'c2'") + "," +
        modelObject("re", "'kind':'realization','client':'c2','supplier':'c1'") +
        ",{'kind':'class','id':'c2','projections':[" + line + "]}";
    const std::string literal = modelObject("v1", "'value':'v','position':9");
    return json(
        "{'$schema':'s','format':'kiv-model','version':1,'name':'M','description':'MD','stereotype':'MS','types':[" +
        modelObject("t1", "'kind':'baseType','dataType':'CHAR','length':2,'scale':-3,'typeValues':[" + literal + "]") +
        "," + modelObject("t2", "'kind':'derivedType'") +
        "],'modelElements':[{'kind':'note','id':'n','text':'loose'}],'diagrams':[" +
        modelObject("od", "'kind':'diagram','elements':['c1']") + "],'childPackages':[" +
        modelObject("p1", "'kind':'designPackage','modelElements':[" + elements + "],'childPackages':[" +
                              modelObject("p2", "'kind':'package'") + "],'diagrams':[" +
                              modelObject("cd", "'kind':'classDiagram','elements':['re','c1','as']") + "]") +
        "]}");
}
