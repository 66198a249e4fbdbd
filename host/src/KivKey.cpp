#include "kiv/KivKey.h"

KivKey::KivKey(KivElementType code) : KivModelObject(code) {}
KivCandidateKey::KivCandidateKey() : KivKey(KivElementType::CandidateKey) {}
KivForeignKey::KivForeignKey() : KivKey(KivElementType::ForeignKey) {}

KivKeyMappings::KivKeyMappings() noexcept = default;
KivKeyMappings::~KivKeyMappings() = default;

void KivKeyMappings::add(const KivKeyMapping& mapping)
{
    counterparts.reserve(1);
    keys.add(mapping.key);
    counterparts.add(mapping.counterpart);
}

KivKeyMapping KivKeyMappings::at(std::size_t index) const
{
    return {keys.at(index), counterparts.at(index)};
}

KivModelObject* KivKeyMappings::counterpartOf(const KivKey* key) const
{
    const std::size_t index = key ? keys.indexOf(key) : KivSequence::npos;
    return index == KivSequence::npos ? nullptr : counterparts.at(index);
}
