#pragma once

class FltRecord;

/// An object that is notified of every @p Subject.
template <class Subject>
class FltObserver
{
public:
    virtual void update(Subject const* subject) = 0; ///< Called with each subject.
    virtual ~FltObserver() = default;
};

/// An observer of every record that the parser makes.
class FltRecordObserver : public FltObserver<FltRecord>
{
};

/// An object that notifies observers of every @p Subject. It doesn't own them.
template <class Subject, class Observer>
class FltObservable
{
public:
    virtual void attachFltObserver(Observer* observer) = 0; ///< Adds an observer.
    virtual void detachFltObserver(Observer* observer) = 0; ///< Removes an observer.
    virtual void notify(Subject const* subject) = 0;        ///< Tells the observers of a subject.

protected:
    ~FltObservable() = default;
};

/// An object that notifies observers of records.
class FltRecordObservable : public FltObservable<FltRecord, FltRecordObserver>
{
protected:
    ~FltRecordObservable() = default;
};
