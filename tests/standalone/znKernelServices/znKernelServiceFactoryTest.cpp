#include "host/znKernelServices/znKernelServiceFactory.h"

#include "host/znKernelServices/znReferenceService.h"
#include "tests/standalone/session/SessionTest.h"

namespace
{

class GreetingService : public znBaseService
{
public:
    virtual int answer() const { return 42; }
};

class LouderService final : public GreetingService
{
public:
    int answer() const override { return 43; }
};

class KernelServiceFactoryTest : public SessionTest
{
protected:
    /// What `get<T>` finds, and what it says to standard error.
    template <class T>
    std::pair<T*, std::string> find()
    {
        testing::internal::CaptureStderr();
        T* found = znKernelServiceFactory::the()->get<T>();
        return {found, testing::internal::GetCapturedStderr()};
    }
};

TEST_F(KernelServiceFactoryTest, FindsTheServiceThatIsListedUnderAType)
{
    LouderService service;
    m_session.setService<GreetingService>(&service);
    const auto [found, said] = find<GreetingService>();
    ASSERT_EQ(found, &service);
    EXPECT_EQ(found->answer(), 43);
    EXPECT_EQ(said, "");
}

TEST_F(KernelServiceFactoryTest, AnUnknownTypeIsToldByItsName)
{
    const auto [found, said] = find<GreetingService>();
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(said,
              std::string("znKernelServiceFactory: couldn't find class '") + typeid(GreetingService).name() + "'!\n");
}

TEST_F(KernelServiceFactoryTest, ATypeWithoutItsServiceIsToldByItsName)
{
    m_session.setService<GreetingService>(nullptr);
    const auto [found, said] = find<GreetingService>();
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(said, std::string("znKernelServiceFactory: service '") + typeid(GreetingService).name() + "' is NULL!\n");
}

TEST_F(KernelServiceFactoryTest, TheNameOfATypeIsThatOfItsRecord)
{
    m_session.removeService<znReferenceService>();
    EXPECT_EQ(find<znReferenceService>().second,
              "znKernelServiceFactory: couldn't find class '18znReferenceService'!\n");
    m_session.setService<znReferenceService>(nullptr);
    EXPECT_EQ(find<znReferenceService>().second, "znKernelServiceFactory: service '18znReferenceService' is NULL!\n");
}

TEST_F(KernelServiceFactoryTest, AServiceIsNotFoundUnderItsBaseOrADerivedType)
{
    LouderService service;
    m_session.setService<GreetingService>(&service);
    EXPECT_EQ(find<LouderService>().first, nullptr);
    EXPECT_EQ(find<znBaseService>().first, nullptr);
}

TEST_F(KernelServiceFactoryTest, TheDownCastIsChecked)
{
    // Listed under a type that it is not.
    GreetingService service;
    m_session.setService<LouderService>(&service);
    const auto [found, said] = find<LouderService>();
    EXPECT_EQ(found, nullptr);
    EXPECT_EQ(said, "");
}

TEST_F(KernelServiceFactoryTest, ASessionHasAReferenceService)
{
    EXPECT_NE(find<znReferenceService>().first, nullptr);
}

TEST(KernelServiceFactoryWithoutSession, KnowsNoService)
{
    {
        zn::StandaloneSession session;
    }
    testing::internal::CaptureStderr();
    EXPECT_EQ(znKernelServiceFactory::the()->get<znReferenceService>(), nullptr);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "znKernelServiceFactory: couldn't find class '18znReferenceService'!\n");
}

} // namespace
