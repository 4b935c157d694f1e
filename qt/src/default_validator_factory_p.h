#pragma once

#include <vrn/qt/default_validator_factory.h>

#include <boost/shared_ptr.hpp>

#include <memory>

namespace vrn::qt {

/// The validator that the branch "validator" of a tree describes by its "kind". Null if there
/// is no factory, no branch or no kind; nothing is read without a factory. An unknown kind
/// throws as ValidatorFactory::create does.
VRN_QT2_EXPORT boost::shared_ptr<IValidator> createValidatorFromHints(
    const ValidatorFactory<ValidatorKind, Hints>* factory, const Hints& hints);

namespace detail {

/// The same, for a control that takes its validator over.
std::unique_ptr<IValidator> uniqueValidatorFromHints(
    const ValidatorFactory<ValidatorKind, Hints>* factory, const Hints& hints);

} // namespace detail

} // namespace vrn::qt
